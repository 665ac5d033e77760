// The bakery's workbook. Its cells hold numbers and a date; what the slides show
// is what their number formats make of them.
import JSZip from 'jszip';
import writeWorkbook from 'write-excel-file/node';
import { pack } from './deck.mjs';
import { orderFonts } from './schema.mjs';

const EURO = '[$€-1809]#,##0.00';
const PERCENT = '0%;"−"0%';
const UNTIL = '"Today until "hh:mm';

export const prices = [
  ['Bread', 'Country sourdough', 'Wheat and rye, 900 g', 5.4],
  ['Bread', 'Dark rye', 'Whole grain, 750 g', 4.8],
  ['Bread', 'Walnut loaf', 'With roasted walnuts, 600 g', 5.9],
  ['Bread', 'Baguette', 'Baked every two hours', 1.95],
  ['Bread', 'Spelt rolls', 'Bag of four', 3.2],
  ['Bread', 'Olive ciabatta', 'With green olives, 400 g', 3.9],
  ['Bread', 'Honey brioche', 'Soft and sweet, 450 g', 4.6],
  ['Cakes & coffee', 'Apple tart', 'Slice, with cinnamon', 3.8],
  ['Cakes & coffee', 'Plum crumble', 'Slice, with vanilla cream', 4.1],
  ['Cakes & coffee', 'Butter croissant', 'Warm from the oven', 2.1],
  ['Cakes & coffee', 'Almond crème roll', 'Filled by hand', 2.75],
  ['Cakes & coffee', 'Filter coffee', 'Roast of the month', 2.6],
  ['Cakes & coffee', 'Flat white', 'Double shot', 3.7],
  ['Cakes & coffee', 'Hot chocolate', 'Dark, with oat milk', 3.9],
].map(([section, item, note, price]) => ({ section, item, note, price }));

export const offer = {
  item: 'Walnut loaf',
  note: 'Roasted walnuts, stone-milled flour, a day and a night of rest',
  price: 4.4,
  before: 5.9,
  saving: -0.25,
  until: new Date(Date.UTC(2026, 0, 5, 18)),
  picture: 'walnut-loaf',
};

const header = (...names) => names.map((value) => ({ value, fontWeight: 'bold', backgroundColor: '#F6E7CF' }));
const cell = (value, format) => ({ value, format });
const widths = (...all) => all.map((width) => ({ width }));

const sheets = [
  {
    sheet: 'Prices',
    stickyRowsCount: 1,
    columns: widths(16, 22, 30, 10),
    data: [
      header('Section', 'Item', 'Note', 'Price'),
      ...prices.map(({ section, item, note, price }) => [section, item, note, cell(price, EURO)]),
    ],
  },
  {
    sheet: 'Offer',
    stickyRowsCount: 1,
    columns: widths(22, 60, 10, 10, 10, 20, 18),
    data: [
      header('Item', 'Note', 'Price', 'Before', 'Saving', 'Until', 'Picture'),
      [
        offer.item, offer.note, cell(offer.price, EURO), cell(offer.before, EURO),
        cell(offer.saving, PERCENT), cell(offer.until, UNTIL), offer.picture,
      ],
    ],
  },
];

const workbook = await JSZip.loadAsync(await writeWorkbook(sheets, { fontFamily: 'Calibri', fontSize: 11 }).toBuffer());
workbook.file('xl/styles.xml', orderFonts(await workbook.file('xl/styles.xml').async('string')));
await pack(workbook, 'shop/prices.xlsx');
