// An airport's departures board: dark, in the colours of its signs, read from afar.
import { art, drawing, fixed, label, newDeck, readTable, save, titleHolder } from './deck.mjs';

const colours = {
  dk1: '0B1220', lt1: 'F5F7FA', dk2: '152036', lt2: '9FB0C7',
  accent1: 'FFC72C', accent2: '3DDC97', accent3: 'FF9F1C', accent4: 'FF5A5F', accent5: '4CC9F0', accent6: '6C7A93',
};
const ROWS = 9;
const ALERTS = 4;
const PAGE = { rows: 7, columns: 2 };
const board = { top: 1.86, step: 0.57 };
const columns = [
  { name: 'Time', x: 0.75, w: 1.25, style: { color: 'accent1', bold: true } },
  { name: 'Flight', x: 2.15, w: 1.55 },
  { name: 'Destination', x: 3.85, w: 4.2, style: { bold: true } },
  { name: 'Gate', x: 7.95, w: 1.05, style: { color: 'accent1', bold: true } },
  { name: 'Status', x: 9.85, w: 2.75 },
];
const lights = { Go: 'accent2', Wait: 'accent3', Stop: 'accent4' };
// The aeroplane of the sign, nose to the top.
const aeroplane = [
  { x: 50, y: 0, moveTo: true }, { x: 57, y: 14, curve: { type: 'quadratic', x1: 56, y1: 4 } },
  { x: 57, y: 36 }, { x: 99, y: 64 }, { x: 99, y: 73 }, { x: 57, y: 60 }, { x: 55, y: 84 }, { x: 69, y: 94 }, { x: 69, y: 100 },
  { x: 50, y: 95 }, { x: 31, y: 100 }, { x: 31, y: 94 }, { x: 45, y: 84 }, { x: 43, y: 60 }, { x: 1, y: 73 }, { x: 1, y: 64 },
  { x: 43, y: 36 }, { x: 43, y: 14 }, { x: 50, y: 0, curve: { type: 'quadratic', x1: 44, y1: 4 } }, { close: true },
];

const deck = newDeck({ title: 'Departures', head: 'Arial', body: 'Arial' });

const heading = (text, x, w) =>
  fixed(text.toUpperCase(), { x, y: 1.42, w, h: 0.32 }, { fontSize: 12, bold: true, charSpacing: 1.5, color: 'tx2' });
const sign = (colour) => fixed('', { x: 0.5, y: 0.36, w: 0.76, h: 0.76 }, { shape: 'roundRect', rectRadius: 0.1, fill: { color: colour } });
const rule = (colour) => ({ rect: { x: 0.5, y: 1.32, w: 12.333, h: 0.025, fill: { color: colour } } });
const footer = (text) => fixed(text, { x: 0.75, y: 7.06, w: 11.8, h: 0.3 }, { fontSize: 12, color: 'tx2' });
const title = titleHolder({ x: 1.5, y: 0.36, w: 5.2, h: 0.76 }, { fontSize: 38, bold: true });

deck.defineSlideMaster({
  title: 'Board', background: { color: 'bg1' },
  objects: [
    sign('accent1'), rule('accent1'),
    ...columns.map((c) => heading(c.name, c.x, c.w)),
    ...Array.from({ length: Math.ceil(ROWS / 2) }, (_, i) => ({
      rect: { x: 0.5, y: board.top + 2 * i * board.step, w: 12.333, h: board.step, fill: { color: 'bg2' } },
    })),
    footer('Gates close before departure. Please keep your bags with you at all times.'),
    title,
  ],
});
deck.defineSlideMaster({
  title: 'Notices', background: { color: 'bg1' },
  objects: [
    sign('accent3'), rule('accent3'),
    ...Array.from({ length: ALERTS }, (_, i) => ({
      rect: { x: 0.5, y: 1.65 + i * 1.31, w: 12.333, h: 1.16, fill: { color: 'bg2' } },
    })),
    footer('Staff at the information desk in hall B will help you with new connections.'),
    title,
  ],
});
// The flights by destination stand in two columns that are read one after the other.
const page = { top: 1.86, step: 0.715, w: 6.04, lefts: [0.5, 6.793] };
const entry = [
  { name: 'Destination', x: 0.25, w: 2.75, size: 24, style: { bold: true } },
  { name: 'Flight', x: 2.95, w: 1.2, size: 16, style: { color: 'tx2' } },
  { name: 'Gate', x: 4.0, w: 0.7, size: 22, style: { color: 'accent1', bold: true, align: 'right' } },
  { name: 'Time', x: 4.75, w: 1.04, size: 24, style: { bold: true, align: 'right' } },
];
deck.defineSlideMaster({
  title: 'Destinations', background: { color: 'bg1' },
  objects: [
    sign('accent5'), rule('accent5'),
    ...page.lefts.flatMap((left) => [
      ...entry.map(({ name, x, w, style }) =>
        fixed(name.toUpperCase(), { x: left + x, y: 1.42, w, h: 0.32 }, { fontSize: 12, bold: true, charSpacing: 1.5, color: 'tx2', align: style.align ?? 'left' })),
      ...Array.from({ length: Math.ceil(PAGE.rows / 2) }, (_, i) => ({
        rect: { x: left, y: page.top + 2 * i * page.step, w: page.w, h: page.step, fill: { color: 'bg2' } },
      })),
    ]),
    footer('The next flight to each destination. Find changes on the departures board.'),
    title,
  ],
});
deck.defineSlideMaster({
  title: 'Welcome', background: { color: 'bg1' },
  objects: [
    { image: { path: art('harbour.png'), altText: 'An aeroplane over the harbour at dusk', x: 0, y: 0, w: 6.667, h: 7.5 } },
    titleHolder({ x: 7.3, y: 0.9, w: 5.5, h: 0.95 }, { fontSize: 38, bold: true }),
  ],
});

function clock(slide) {
  label(slide, 'Date', 'Monday 5 January', { x: 6.6, y: 0.36, w: 3.6, h: 0.76 }, { fontSize: 18, color: 'tx2', align: 'right' });
  label(slide, 'Clock', '14:30:00', { x: 10.35, y: 0.36, w: 2.483, h: 0.76 }, { fontSize: 40, bold: true, color: 'accent1', align: 'right' });
}

const first = deck.addSlide({ masterName: 'Board' });
first.addText('Departures', { placeholder: 'title' });
drawing(first, 'Aeroplane', aeroplane, { x: 0.6, y: 0.46, w: 0.56, h: 0.56, fill: 'bg1', rotate: 45 });
clock(first);
readTable('departures/departures.txt').slice(0, ROWS).forEach((flight, i) => {
  const y = board.top + i * board.step;
  for (const { name, x, w, style } of columns) {
    label(first, `r${i + 1} ${name}`, flight[name], { x, y, w, h: board.step }, { fontSize: 24, ...style });
  }
  for (const [light, colour] of Object.entries(lights)) {
    label(first, `r${i + 1} ${light}`, flight[light], { x: 9.35, y, w: 0.35, h: board.step }, { fontSize: 24, align: 'center', color: colour });
  }
});

const second = deck.addSlide({ masterName: 'Notices' });
second.addText('Changes to flights', { placeholder: 'title' });
second.addShape('triangle', { objectName: 'Warning', x: 0.63, y: 0.48, w: 0.5, h: 0.45, fill: { color: 'bg1' } });
label(second, 'Warning mark', '!', { x: 0.63, y: 0.56, w: 0.5, h: 0.38 }, { fontSize: 18, bold: true, align: 'center', color: 'accent3' });
clock(second);
readTable('departures/alerts.txt').slice(0, ALERTS).forEach((alert, i) => {
  const y = 1.65 + i * 1.31;
  const row = `a${i + 1}`;
  label(second, `${row} Time`, alert.Time, { x: 0.75, y, w: 1.25, h: 1.16 }, { fontSize: 26, bold: true, color: 'accent1' });
  label(second, `${row} Destination`, alert.Destination, { x: 2.15, y: y + 0.13, w: 4.6, h: 0.52 }, { fontSize: 26, bold: true });
  label(second, `${row} Flight`, alert.Flight, { x: 2.15, y: y + 0.63, w: 4.6, h: 0.38 }, { fontSize: 16, color: 'tx2' });
  label(second, `${row} Notice`, alert.Notice, { x: 7.1, y: y + 0.13, w: 5.5, h: 0.52 }, { fontSize: 28, bold: true, color: 'accent3' });
  label(second, `${row} Detail`, alert.Detail, { x: 7.1, y: y + 0.63, w: 5.5, h: 0.38 }, { fontSize: 16, color: 'tx2' });
});

const third = deck.addSlide({ masterName: 'Welcome' });
label(third, 'Airport', 'PORT CALDER AIRPORT', { x: 7.3, y: 0.6, w: 5.5, h: 0.32 }, { fontSize: 13, bold: true, charSpacing: 2, color: 'accent1' });
third.addText('Welcome', { placeholder: 'title' });
label(third, 'Arrivals', 'Arrivals and baggage: level 0, follow the blue signs', { x: 7.3, y: 1.8, w: 5.5, h: 0.4 }, { fontSize: 16, color: 'tx2' });
const [here, ...elsewhere] = readTable('departures/weather.txt');
label(third, 'w1 Temperature', here.Temperature, { x: 7.3, y: 2.55, w: 2.7, h: 1.5 }, { fontSize: 88, bold: true });
label(third, 'w1 Sky', here.Sky, { x: 10.0, y: 2.72, w: 2.8, h: 0.5 }, { fontSize: 22, bold: true, align: 'right' });
label(third, 'w1 City', here.City, { x: 10.0, y: 3.2, w: 2.8, h: 0.36 }, { fontSize: 16, color: 'tx2', align: 'right' });
label(third, 'w1 Wind', here.Wind, { x: 10.0, y: 3.54, w: 2.8, h: 0.36 }, { fontSize: 16, color: 'tx2', align: 'right' });
elsewhere.forEach((place, i) => {
  const y = 4.32 + i * 0.56;
  third.addShape('rect', { objectName: `Rule ${i + 1}`, x: 7.3, y, w: 5.5, h: 0.012, fill: { color: 'bg2' } });
  label(third, `w${i + 2} City`, place.City, { x: 7.3, y, w: 2.2, h: 0.56 }, { fontSize: 18, bold: true });
  label(third, `w${i + 2} Sky`, place.Sky, { x: 9.5, y, w: 2.3, h: 0.56 }, { fontSize: 16, color: 'tx2' });
  label(third, `w${i + 2} Temperature`, place.Temperature, { x: 11.8, y, w: 1.0, h: 0.56 }, { fontSize: 20, bold: true, color: 'accent1', align: 'right' });
});
label(third, 'Date', 'Monday 5 January', { x: 7.3, y: 6.68, w: 3.3, h: 0.5 }, { fontSize: 16, color: 'tx2' });
label(third, 'Clock', '14:30', { x: 10.6, y: 6.62, w: 2.2, h: 0.6 }, { fontSize: 30, bold: true, color: 'accent1', align: 'right' });

const fourth = deck.addSlide({ masterName: 'Destinations' });
fourth.addText('Destinations', { placeholder: 'title' });
drawing(fourth, 'Aeroplane', aeroplane, { x: 0.6, y: 0.46, w: 0.56, h: 0.56, fill: 'bg1', rotate: 45 });
clock(fourth);
const destinations = readTable('departures/destinations.txt').slice(0, PAGE.rows * PAGE.columns);
label(fourth, 'Letters', destinations[0].Letters, { x: 4.95, y: 0.36, w: 2.3, h: 0.76 }, { fontSize: 38, color: 'accent5' });
destinations.forEach((flight, i) => {
  const left = page.lefts[Math.floor(i / PAGE.rows)];
  const y = page.top + (i % PAGE.rows) * page.step;
  for (const { name, x, w, size, style } of entry) {
    label(fourth, `d${i + 1} ${name}`, flight[name], { x: left + x, y, w, h: page.step }, { fontSize: size, ...style });
  }
});

await save(deck, 'departures/departures.pptx', {
  colours, dark: true, advance: [12, 10, 10, 15], transition: '<p:fade/>', kiosk: true,
});
