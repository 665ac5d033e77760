// What the three decks share: drawing helpers over PptxGenJS, and the touches
// that it cannot give a presentation, made in the package after it is written.
import { writeFile } from 'node:fs/promises';
import { readFileSync } from 'node:fs';
import { fileURLToPath } from 'node:url';
import JSZip from 'jszip';
import PptxGenJS from 'pptxgenjs';
import { mendChart, orderPresentation } from './schema.mjs';

export const samples = fileURLToPath(new URL('..', import.meta.url));
export const art = (name) => fileURLToPath(new URL(`art/${name}`, import.meta.url));

// A fixed date keeps a rebuilt deck identical to the committed one.
const STAMP = new Date(Date.UTC(2026, 0, 5, 9, 0, 0));

export function newDeck({ title, head, body }) {
  const deck = new PptxGenJS();
  deck.layout = 'LAYOUT_WIDE';
  deck.title = title;
  deck.subject = 'Sample of a live data display';
  deck.author = 'Lumenfold';
  deck.company = 'Lumenfold';
  deck.theme = { headFontFace: head, bodyFontFace: body };
  return deck;
}

// Rows of a TAB-delimited file as objects keyed by the header line.
export function readTable(file) {
  const [header, ...lines] = readFileSync(`${samples}/${file}`, 'utf8').trimEnd().split('\n');
  const columns = header.split('\t');
  return lines.map((line) => {
    const fields = line.split('\t');
    return Object.fromEntries(columns.map((column, i) => [column, fields[i] ?? '']));
  });
}

// One named line of text that neither wraps nor resizes. An empty text becomes
// a blank, so that the shape keeps its run and with it its formatting.
export function label(slide, name, text, box, style = {}) {
  slide.addText(text === '' ? ' ' : text, {
    objectName: name, ...box, margin: 0, valign: 'middle', wrap: false, lang: 'en-GB', color: 'tx1', ...style,
  });
}

// A text object for a layout, where PptxGenJS takes descriptions instead of calls.
export const fixed = (text, box, style = {}) => ({
  text: { text, options: { ...box, margin: 0, valign: 'middle', wrap: false, lang: 'en-GB', color: 'tx1', ...style } },
});

export const titleHolder = (box, style = {}) => ({
  placeholder: {
    options: { name: 'title', type: 'title', ...box, margin: 0, align: 'left', valign: 'middle', color: 'tx1', ...style },
    text: 'Title',
  },
});

// Anew with the fixed date, charts' workbooks too, and without entries for folders, which no package has.
async function packed(zip) {
  const fresh = new JSZip();
  for (const { name } of Object.values(zip.files).filter((each) => !each.dir)) {
    let content = await zip.file(name).async('nodebuffer');
    if (name.endsWith('.xlsx')) content = await packed(await JSZip.loadAsync(content));
    if (name === 'docProps/core.xml') content = content.toString().replace(/\d{4}-\d\d-\d\dT[\d:.]+Z/g, STAMP.toISOString().replace('.000', ''));
    fresh.file(name, content, { date: STAMP, createFolders: false });
  }
  return fresh.generateAsync({ type: 'nodebuffer', compression: 'DEFLATE' });
}

export async function pack(zip, file) {
  await writeFile(`${samples}/${file}`, await packed(zip));
  console.log(`${file} written`);
}

const escapeName = (name) => name.replace(/&/g, '&amp;').replace(/"/g, '&quot;');

// The `<p:sp>` or `<p:pic>` element with this name, as [start, end) in the slide's XML.
function shapeRange(xml, name) {
  const at = xml.indexOf(` name="${escapeName(name)}"`);
  if (at < 0) throw new Error(`no shape is named "${name}"`);
  const start = Math.max(xml.lastIndexOf('<p:sp>', at), xml.lastIndexOf('<p:pic>', at));
  const close = xml.startsWith('<p:pic>', start) ? '</p:pic>' : '</p:sp>';
  return [start, xml.indexOf(close, at) + close.length];
}

const schemeColours = /^(tx|bg|accent)\d$/;
function colourXml(colour) {
  return schemeColours.test(colour) ? `<a:schemeClr val="${colour}"/>` : `<a:srgbClr val="${colour}"/>`;
}

function gradientXml({ stops, angle }) {
  const list = stops.map(([at, colour]) => `<a:gs pos="${at * 1000}">${colourXml(colour)}</a:gs>`).join('');
  return `<a:gradFill rotWithShape="1"><a:gsLst>${list}</a:gsLst><a:lin ang="${angle * 60000}" scaled="0"/></a:gradFill>`;
}

function fillWithGradient(xml, name, gradient) {
  const [start, end] = shapeRange(xml, name);
  const shape = xml.slice(start, end);
  const filled = shape.replace(/(<\/a:(?:prst|cust)Geom>)<a:solidFill>.*?<\/a:solidFill>/s, `$1${gradientXml(gradient)}`);
  if (filled === shape) throw new Error(`shape "${name}" has no solid fill to replace`);
  return xml.slice(0, start) + filled + xml.slice(end);
}

// PptxGenJS numbers tables and pictures apart from the other shapes; a slide's
// shape ids have to be unique.
function renumber(xml) {
  let next = 0;
  return xml.replace(/(<p:cNvPr id=")\d+"/g, (_, start) => `${start}${++next}"`);
}

// Gathers shapes into one group, at the place of the first in the stacking order.
function groupShapes(xml, group, names) {
  const ranges = names.map((name) => shapeRange(xml, name)).sort((a, b) => a[0] - b[0]);
  const members = ranges.map(([start, end]) => xml.slice(start, end));
  const edges = members.map((member) => {
    const [, x, y, w, h] = member.match(/<a:off x="(-?\d+)" y="(-?\d+)"\/><a:ext cx="(\d+)" cy="(\d+)"/).map(Number);
    return { left: x, top: y, right: x + w, bottom: y + h };
  });
  const left = Math.min(...edges.map((e) => e.left));
  const top = Math.min(...edges.map((e) => e.top));
  const size = `cx="${Math.max(...edges.map((e) => e.right)) - left}" cy="${Math.max(...edges.map((e) => e.bottom)) - top}"`;
  const place = `x="${left}" y="${top}"`;
  const open =
    `<p:grpSp><p:nvGrpSpPr><p:cNvPr id="0" name="${escapeName(group)}"/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr>` +
    `<p:grpSpPr><a:xfrm><a:off ${place}/><a:ext ${size}/><a:chOff ${place}/><a:chExt ${size}/></a:xfrm></p:grpSpPr>`;
  let result = xml;
  for (const [start, end] of [...ranges].reverse()) result = result.slice(0, start) + result.slice(end);
  return result.slice(0, ranges[0][0]) + open + members.join('') + '</p:grpSp>' + result.slice(ranges[0][0]);
}

function setThemeColours(xml, colours) {
  let result = xml;
  for (const [slot, colour] of Object.entries(colours)) {
    const before = result;
    result = result.replace(new RegExp(`<a:${slot}>.*?</a:${slot}>`, 's'), `<a:${slot}><a:srgbClr val="${colour}"/></a:${slot}>`);
    if (result === before) throw new Error(`the theme has no colour "${slot}"`);
  }
  return result;
}

/*
 * Writes the deck with what PptxGenJS lacks:
 *   colours    the theme's colour scheme, by slot (dk1, lt1, ..., accent6)
 *   dark       text is light on dark: the master maps bg1 to dk1
 *   advance    seconds per slide, in slide order
 *   transition the transition's element, such as '<p:fade/>'
 *   kiosk      shown at a kiosk, else by a speaker; either way in a loop
 *   gradients  [part, shape name or null for the background, {stops, angle}]; the
 *              deck's own layouts are slideLayout2.xml and following
 *   groups     [part, group name, shape names]
 */
export async function save(deck, file, { colours, dark = false, advance, transition, kiosk, gradients = [], groups = [] }) {
  const zip = await JSZip.loadAsync(await deck.write({ outputType: 'nodebuffer' }));
  const edit = async (part, change) => {
    const before = await zip.file(part).async('string');
    zip.file(part, change(before));
  };

  await edit('ppt/theme/theme1.xml', (xml) => setThemeColours(xml, colours));
  if (dark) {
    await edit('ppt/slideMasters/slideMaster1.xml', (xml) =>
      xml.replace(/<p:clrMap [^>]*\/>/, (map) =>
        map.replace('bg1="lt1"', 'bg1="dk1"').replace('tx1="dk1"', 'tx1="lt1"').replace('bg2="lt2"', 'bg2="dk2"').replace('tx2="dk2"', 'tx2="lt2"')));
  }
  for (const [part, name, gradient] of gradients) {
    await edit(part, (xml) => name === null
      ? xml.replace(/(<p:bgPr[^>]*>)<a:solidFill>.*?<\/a:solidFill>/s, `$1${gradientXml(gradient)}<a:effectLst/>`)
      : fillWithGradient(xml, name, gradient));
  }
  for (const [part, group, names] of groups) await edit(part, (xml) => groupShapes(xml, group, names));
  for (const [i, seconds] of advance.entries()) {
    await edit(`ppt/slides/slide${i + 1}.xml`, (xml) =>
      renumber(xml).replace('</p:clrMapOvr>', `</p:clrMapOvr><p:transition spd="med" advTm="${seconds * 1000}">${transition}</p:transition>`));
  }
  const mode = kiosk ? '<p:kiosk/>' : '<p:present/>';
  const show = `<p:showPr loop="1" showNarration="1" useTimings="1">${mode}<p:sldAll/></p:showPr>`;
  await edit('ppt/presProps.xml', (xml) =>
    xml.replace(/<p:presentationPr([^>]*?)\/>/, `<p:presentationPr$1>${show}</p:presentationPr>`));
  await edit('ppt/slideLayouts/slideLayout1.xml', (xml) => xml.replace('name="DEFAULT"', 'name="Blank"'));
  await edit('ppt/presentation.xml', orderPresentation);
  for (const { name } of zip.file(/^ppt\/charts\/chart\d+\.xml$/)) await edit(name, mendChart);
  // PptxGenJS declares one master for each slide but writes only the first.
  await edit('[Content_Types].xml', (xml) =>
    xml.replace(/<Override PartName="\/([^"]+)"[^>]*\/>/g, (override, part) => (zip.file(part) ? override : '')));

  await pack(zip, file);
}

// A custom geometry from points in a 100 × 100 square, scaled to a box in inches.
export function drawing(slide, name, points, { x, y, w, h, fill, rotate = 0 }) {
  slide.addShape('custGeom', {
    objectName: name, x, y, w, h, rotate, fill: { color: fill },
    points: points.map((p) => (p.close ? p : { ...p, x: (p.x * w) / 100, y: (p.y * h) / 100, ...(p.curve && { curve: scaleCurve(p.curve, w, h) }) })),
  });
}
const scaleCurve = (c, w, h) => ({ ...c, x1: (c.x1 * w) / 100, y1: (c.y1 * h) / 100 });
