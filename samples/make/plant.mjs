// A plant's dashboard for the hall's screens: key figures, the lines, the shift's orders.
// Makes its database as well.
import { execFileSync } from 'node:child_process';
import { readFileSync, rmSync } from 'node:fs';
import { art, fixed, label, newDeck, samples, save, titleHolder } from './deck.mjs';

const colours = {
  dk1: '14263A', lt1: 'FFFFFF', dk2: '5B6F82', lt2: 'EEF3F7',
  accent1: '1F6F8B', accent2: '2EC4B6', accent3: '1E9E5A', accent4: 'E08A00', accent5: 'D1344B', accent6: 'C9D6DF',
};
const database = `${samples}/plant/plant.db`;
rmSync(database, { force: true });
const sqlite = (statements) => execFileSync('sqlite3', ['-bail', '-json', database], { input: statements, encoding: 'utf8' });
sqlite(readFileSync(new URL('plant.sql', import.meta.url)));
const read = (table) => JSON.parse(sqlite(`SELECT * FROM ${table}`));

const lights = { Run: 'accent3', Slow: 'accent4', Halt: 'accent5' };
const card = { fill: { color: 'bg1' }, line: { color: 'accent6', width: 0.75 }, rectRadius: 0.08 };

const deck = newDeck({ title: 'Plant', head: 'Calibri', body: 'Calibri' });

deck.defineSlideMaster({
  title: 'Dashboard', background: { color: 'bg2' },
  objects: [
    { text: { text: '', options: { objectName: 'Band', x: 0, y: 0, w: 13.333, h: 0.95, shape: 'rect', fill: { color: 'tx1' } } } },
    { image: { path: art('mark.png'), altText: 'The plant’s sign', x: 0.45, y: 0.19, w: 0.57, h: 0.57 } },
    titleHolder({ x: 1.25, y: 0.14, w: 6.0, h: 0.67 }, { fontSize: 28, bold: true, color: 'bg1' }),
  ],
});

function banner(slide, title, shift) {
  slide.addText(title, { placeholder: 'title' });
  label(slide, 'Shift', shift.Shift, { x: 7.3, y: 0.17, w: 3.3, h: 0.34 }, { fontSize: 16, bold: true, color: 'bg1', align: 'right' });
  label(slide, 'Lead', shift.Lead, { x: 7.3, y: 0.47, w: 3.3, h: 0.3 }, { fontSize: 14, color: 'accent6', align: 'right' });
  label(slide, 'Clock', '09:30:00', { x: 10.8, y: 0.14, w: 2.083, h: 0.67 }, { fontSize: 34, bold: true, color: 'accent2', align: 'right' });
}

function lamp(slide, row, line, box, size) {
  for (const [light, colour] of Object.entries(lights)) {
    label(slide, `${row} ${light}`, line.Light === light ? '●' : '', box, { fontSize: size, align: 'center', color: colour });
  }
}

const [shift] = read('shift');
const lines = read('plant');
const groups = [];

const overview = deck.addSlide({ masterName: 'Dashboard' });
banner(overview, 'Plant 4: lines and figures', shift);

read('kpi').forEach((figure, i) => {
  const x = 0.45 + i * 3.145;
  const tile = `k${i + 1}`;
  overview.addShape('roundRect', { objectName: `${tile} Card`, x, y: 1.2, w: 3.0, h: 1.72, ...card });
  overview.addShape('rect', { objectName: `${tile} Edge`, x: x + 0.2, y: 1.2, w: 0.62, h: 0.06, fill: { color: 'accent2' } });
  groups.push(['ppt/slides/slide1.xml', `Tile ${i + 1}`, [`${tile} Card`, `${tile} Edge`]]);
  label(overview, `${tile} Name`, figure.Name, { x: x + 0.2, y: 1.33, w: 2.6, h: 0.36 }, { fontSize: 15, color: 'tx2' });
  label(overview, `${tile} Value`, figure.Value, { x: x + 0.2, y: 1.68, w: 2.6, h: 0.75 }, { fontSize: 44, bold: true });
  label(overview, `${tile} Unit`, figure.Unit, { x: x + 2.1, y: 1.33, w: 0.7, h: 0.36 }, { fontSize: 15, color: 'tx2', align: 'right' });
  const trend = { x: x + 0.2, y: 2.45, w: 0.75, h: 0.36 };
  label(overview, `${tile} Better`, figure.Better ?? '', trend, { fontSize: 14, bold: true, color: 'accent3' });
  label(overview, `${tile} Worse`, figure.Worse ?? '', trend, { fontSize: 14, bold: true, color: 'accent5' });
  label(overview, `${tile} Note`, figure.Note, { x: x + 1.0, y: 2.45, w: 1.8, h: 0.36 }, { fontSize: 14, color: 'tx2', align: 'right' });
});

const table = { top: 3.17, row: 0.53 };
const columns = [
  { name: 'Line', x: 1.25, w: 1.4, style: { bold: true } },
  { name: 'Product', x: 2.7, w: 3.7 },
  { name: 'Rate', x: 6.4, w: 1.1, head: 'pcs/min', style: { bold: true, align: 'right' } },
  { name: 'Target', x: 7.6, w: 1.1, style: { color: 'tx2', align: 'right' } },
  { name: 'OEE', x: 8.8, w: 1.1, head: 'OEE %', style: { align: 'right' } },
  { name: 'State', x: 10.4, w: 2.4 },
];
overview.addShape('roundRect', { objectName: 'Lines card', x: 0.45, y: table.top, w: 12.435, h: 3.95, ...card });
for (const { name, x, w, head = name, style } of columns) {
  label(overview, `Head ${name}`, head, { x, y: table.top + 0.1, w, h: 0.42 }, { fontSize: 13, color: 'tx2', align: style?.align ?? 'left' });
}
lines.forEach((line, i) => {
  const y = table.top + 0.57 + i * table.row;
  const row = `l${i + 1}`;
  overview.addShape('line', { objectName: `${row} Rule`, x: 0.7, y, w: 11.935, h: 0, line: { color: 'accent6', width: 0.75 } });
  lamp(overview, row, line, { x: 0.7, y, w: 0.4, h: table.row }, 26);
  for (const { name, x, w, style } of columns) {
    label(overview, `${row} ${name}`, String(line[name]), { x, y, w, h: table.row }, { fontSize: 19, ...style });
  }
});

const orders = deck.addSlide({ masterName: 'Dashboard' });
banner(orders, 'Plant 4: site and orders', shift);

// The lamps of the site's picture stand at their lines.
orders.addImage({ objectName: 'Site', path: art('site.png'), x: 0.45, y: 1.2, w: 6.2, h: 5.0, altText: 'The plant from above: filling, packing, the warehouse and its tanks' });
const halls = [['Filling', 0.95, 1.95], ['Packing', 3.95, 1.95], ['Warehouse', 0.95, 4.1]];
for (const [hall, x, y] of halls) label(orders, `Hall ${hall}`, hall, { x, y, w: 1.8, h: 0.34 }, { fontSize: 14, bold: true, color: 'tx2' });
[[0.95, 2.35], [2.05, 2.35], [0.95, 2.85], [3.95, 2.35], [5.05, 2.35], [3.95, 2.85]].forEach(([x, y], i) => {
  lamp(orders, `s${i + 1}`, lines[i], { x, y, w: 0.3, h: 0.4 }, 20);
  label(orders, `s${i + 1} Line`, lines[i].Line, { x: x + 0.32, y, w: 0.75, h: 0.4 }, { fontSize: 14 });
});
label(orders, 'Stock', '1 204 pallets', { x: 0.95, y: 4.45, w: 2.4, h: 0.5 }, { fontSize: 20, bold: true });
orders.addShape('roundRect', { objectName: 'Safe card', x: 0.45, y: 6.37, w: 6.2, h: 0.75, rectRadius: 0.08, fill: { color: 'accent1' } });
orders.addShape('mathPlus', { objectName: 'Safe cross', x: 0.62, y: 6.48, w: 0.53, h: 0.53, fill: { color: 'bg1' } });
label(orders, 'Days safe', String(shift.DaysSafe), { x: 1.25, y: 6.37, w: 0.95, h: 0.75 }, { fontSize: 30, bold: true, color: 'bg1', align: 'right' });
label(orders, 'Days safe text', 'days without an accident', { x: 2.35, y: 6.37, w: 4.0, h: 0.75 }, { fontSize: 18, color: 'bg1' });

const plan = [
  ['Order', 'Product', 'Line', 'Pieces', 'Due'],
  ['4711-08', 'Cleaning concentrate 1 L', '1', '48 000', '10:45'],
  ['4711-11', 'Glass cleaner 500 ml', '2', '36 000', '11:30'],
  ['4712-02', 'Dish soap 750 ml', '3', '30 000', '12:00'],
  ['4712-05', 'Hand soap 300 ml', '4', '62 400', '12:15'],
  ['4712-09', 'Fabric softener 2 L', '5', '14 400', '13:00'],
  ['4713-01', 'Refill pouch 400 ml', '6', '24 000', '13:30'],
  ['4713-04', 'Wood polish 250 ml', '2', '18 000', '13:50'],
];
const right = new Set([3, 4]);
orders.addTable(
  plan.map((cells, row) => cells.map((text, column) => ({
    text,
    options: {
      align: right.has(column) ? 'right' : 'left', valign: 'middle', bold: row === 0,
      color: row === 0 ? 'bg1' : 'tx1', fontSize: row === 0 ? 14 : 15,
      fill: { color: row === 0 ? 'accent1' : row % 2 ? 'bg1' : 'bg2' },
      margin: [0.03, 0.1, 0.03, 0.1],
    },
  }))),
  { objectName: 'Orders', x: 6.95, y: 1.2, w: 5.933, colW: [1.05, 2.45, 0.6, 0.98, 0.853], rowH: 0.625, border: { type: 'solid', pt: 0.75, color: 'C9D6DF' } },
);
orders.addShape('homePlate', { objectName: 'Next shift', x: 6.95, y: 6.37, w: 5.933, h: 0.75, fill: { color: 'accent2' } });
label(orders, 'Next shift text', 'Hand-over at 14:00 in the control room', { x: 7.2, y: 6.37, w: 5.2, h: 0.75 }, { fontSize: 17, bold: true });

const output = deck.addSlide({ masterName: 'Dashboard' });
banner(output, 'Plant 4: output and stops', shift);

const [totals] = read('totals');
const chartText = { fontFace: 'Calibri', color: '5B6F82' };
const axisText = (axis, size) => ({ [`${axis}AxisLabelFontFace`]: chartText.fontFace, [`${axis}AxisLabelColor`]: chartText.color, [`${axis}AxisLabelFontSize`]: size });
function chartCard(name, title, unit, box) {
  output.addShape('roundRect', { objectName: `${name} card`, ...box, ...card });
  output.addShape('rect', { objectName: `${name} edge`, x: box.x + 0.25, y: box.y, w: 0.62, h: 0.06, fill: { color: 'accent2' } });
  label(output, `${name} title`, title, { x: box.x + 0.25, y: box.y + 0.18, w: 4.4, h: 0.42 }, { fontSize: 20, bold: true });
  label(output, `${name} unit`, unit, { x: box.x + 0.25, y: box.y + 0.57, w: 4.4, h: 0.32 }, { fontSize: 14, color: 'tx2' });
}

chartCard('Output', 'Pallets per hour', 'packed, wrapped and in the warehouse', { x: 0.45, y: 1.2, w: 8.1, h: 5.92 });
label(output, 'Total Pallets', String(totals.Pallets), { x: 6.3, y: 1.32, w: 2.0, h: 0.52 }, { fontSize: 32, bold: true, align: 'right' });
label(output, 'Total Pallets text', 'in eight hours', { x: 6.3, y: 1.79, w: 2.0, h: 0.3 }, { fontSize: 14, color: 'tx2', align: 'right' });
const hours = read('output');
const series = (name, column) => [{ name, labels: hours.map(({ Hour }) => Hour), values: hours.map((hour) => hour[column]) }];
output.addChart(
  [
    {
      type: 'bar', data: series('Pallets', 'Pallets'),
      options: {
        barDir: 'col', barGapWidthPct: 45, chartColors: ['1F6F8B'],
        showValue: true, dataLabelPosition: 'inBase', dataLabelColor: 'FFFFFF', dataLabelFontFace: 'Calibri', dataLabelFontSize: 16, dataLabelFontBold: true,
        dataLabelFormatCode: '0',
      },
    },
    { type: 'line', data: series('Target', 'Target'), options: { chartColors: ['E08A00'], lineSize: 3, lineDataSymbol: 'none' } },
  ],
  {
    objectName: 'Output chart', altText: 'Columns for the pallets of each hour, a line for the target', x: 0.6, y: 2.2, w: 7.8, h: 4.8,
    valAxisMinVal: 0, valAxisMaxVal: 100, valAxisMajorUnit: 20, valGridLine: { color: 'C9D6DF', size: 0.75 }, catGridLine: { style: 'none' },
    valAxisLineShow: false, catAxisLineShow: true, ...axisText('val', 14), ...axisText('cat', 14),
    showLegend: true, legendPos: 'b', legendFontFace: 'Calibri', legendFontSize: 14, legendColor: chartText.color,
  },
);

chartCard('Stops', 'Time lost by cause', 'minutes in this shift', { x: 8.75, y: 1.2, w: 4.133, h: 5.92 });
const stops = read('stops');
output.addChart('doughnut', [{ name: 'Minutes', labels: stops.map(({ Cause }) => Cause), values: stops.map(({ Minutes }) => Minutes) }], {
  objectName: 'Stops chart', altText: 'A ring of the causes of stops', x: 8.9, y: 2.2, w: 3.83, h: 4.8, holeSize: 58,
  chartColors: ['1F6F8B', 'D1344B', 'E08A00', '2EC4B6', '8497A8'], dataBorder: { pt: 2, color: 'FFFFFF' },
  showPercent: true, showLabel: false, showValue: false, dataLabelColor: 'FFFFFF', dataLabelFontFace: 'Calibri', dataLabelFontSize: 14, dataLabelFontBold: true,
  showLegend: true, legendPos: 'b', legendFontFace: 'Calibri', legendFontSize: 15, legendColor: chartText.color,
  layout: { x: 0.04, y: 0.02, w: 0.92, h: 0.74 },
});
label(output, 'Total Minutes', String(totals.Minutes), { x: 10.015, y: 3.55, w: 1.6, h: 0.7 }, { fontSize: 44, bold: true, align: 'center' });
label(output, 'Total Minutes text', 'minutes', { x: 10.015, y: 4.22, w: 1.6, h: 0.36 }, { fontSize: 15, color: 'tx2', align: 'center' });

await save(deck, 'plant/plant.pptx', {
  colours, advance: [20, 12, 16], transition: '<p:fade/>', kiosk: false, groups,
  gradients: [['ppt/slideLayouts/slideLayout2.xml', 'Band', { stops: [[0, 'tx1'], [100, 'accent1']], angle: 0 }],
    ['ppt/slides/slide2.xml', 'Safe card', { stops: [[0, 'accent1'], [100, 'accent3']], angle: 0 }]],
});
