// The price boards of a bakery: bright and warm, with one offer.
import { art, fixed, label, newDeck, samples, save, titleHolder } from './deck.mjs';
import { offer, prices } from './prices.mjs';

const colours = {
  dk1: '3B2416', lt1: 'FFFAF1', dk2: '8A6D57', lt2: 'F6E7CF',
  accent1: 'B5452C', accent2: 'E9A23B', accent3: '6F7F4F', accent4: '8A3A1E', accent5: 'F2C98A', accent6: 'D98E73',
};
const PER_BOARD = 7;

const deck = newDeck({ title: 'Prices', head: 'Cambria', body: 'Calibri' });

const panel = { text: { text: '', options: { objectName: 'Panel', x: 0, y: 0, w: 4.3, h: 7.5, shape: 'rect', fill: { color: 'accent1' } } } };
const name = [
  fixed('The Copper Loaf', { x: 0.55, y: 0.6, w: 3.4, h: 0.6 }, { fontSize: 32, bold: true, fontFace: '+mj-lt', color: 'bg1' }),
  fixed('Bakery and café, since this morning at five', { x: 0.55, y: 1.16, w: 3.4, h: 0.4 }, { fontSize: 14, italic: true, color: 'accent5' }),
];
deck.defineSlideMaster({
  title: 'Prices', background: { color: 'bg1' },
  objects: [
    panel, ...name,
    { image: { path: art('loaf.png'), altText: 'A fresh loaf of bread', x: 0.25, y: 2.15, w: 3.8, h: 3.209 } },
    titleHolder({ x: 5.0, y: 0.5, w: 6.0, h: 0.8 }, { fontSize: 40, bold: true, color: 'accent4' }),
    fixed('All prices include VAT. Ask us about allergens.', { x: 5.0, y: 6.92, w: 7.7, h: 0.3 }, { fontSize: 12, color: 'tx2' }),
  ],
});
deck.defineSlideMaster({
  title: 'Offer', background: { color: 'bg2' },
  objects: [
    fixed('THE COPPER LOAF', { x: 0.8, y: 0.7, w: 5, h: 0.35 }, { fontSize: 14, bold: true, charSpacing: 2, color: 'accent1' }),
    titleHolder({ x: 0.8, y: 1.05, w: 6.0, h: 0.7 }, { fontSize: 32, italic: true, color: 'tx2' }),
  ],
});

const euro = (amount) => `€${amount.toFixed(2)}`;
[0, PER_BOARD].forEach((from) => {
  const slide = deck.addSlide({ masterName: 'Prices' });
  slide.addText(prices[from].section, { placeholder: 'title' });
  label(slide, 'Clock', '09:30', { x: 11.0, y: 0.5, w: 1.7, h: 0.8 }, { fontSize: 26, color: 'tx2', align: 'right' });
  label(slide, 'Date', 'Monday 5 January', { x: 0.55, y: 6.6, w: 3.4, h: 0.4 }, { fontSize: 16, color: 'bg1' });
  prices.slice(from, from + PER_BOARD).forEach((product, i) => {
    const y = 1.5 + i * 0.76;
    const row = `p${from + i + 1}`;
    if (i > 0) {
      slide.addShape('line', { objectName: `${row} Rule`, x: 5.0, y: y - 0.04, w: 7.7, h: 0, line: { color: 'accent2', width: 1, dashType: 'sysDot' } });
    }
    label(slide, `${row} Item`, product.item, { x: 5.0, y, w: 5.6, h: 0.4 }, { fontSize: 22, bold: true, fontFace: '+mj-lt' });
    label(slide, `${row} Note`, product.note, { x: 5.0, y: y + 0.37, w: 5.6, h: 0.28 }, { fontSize: 14, color: 'tx2' });
    label(slide, `${row} Price`, euro(product.price), { x: 10.7, y: y + 0.04, w: 2.0, h: 0.58 }, { fontSize: 28, bold: true, color: 'accent1', align: 'right' });
  });
});

const slide = deck.addSlide({ masterName: 'Offer' });
slide.addText('Offer of the day', { placeholder: 'title' });
slide.addImage({
  objectName: 'Offer Picture', path: `${samples}/shop/pictures/${offer.picture}.png`, altText: 'What is on offer', x: 6.35, y: 1.0, w: 6.4, h: 5.405,
});
label(slide, 'Offer Item', offer.item, { x: 0.8, y: 1.95, w: 6.2, h: 1.0 }, { fontSize: 60, bold: true, fontFace: '+mj-lt', color: 'accent4' });
slide.addText(offer.note, {
  objectName: 'Offer Note', x: 0.8, y: 3.0, w: 5.0, h: 0.85, margin: 0, valign: 'top', fontSize: 20, color: 'tx2', lang: 'en-GB',
});
label(slide, 'Offer Price', euro(offer.price), { x: 0.8, y: 4.0, w: 4.0, h: 1.5 }, { fontSize: 96, bold: true, color: 'accent1' });
label(slide, 'Offer Before', euro(offer.before), { x: 4.2, y: 4.78, w: 1.6, h: 0.6 }, { fontSize: 28, strike: 'sngStrike', color: 'tx2' });
slide.addShape('roundRect', { objectName: 'Until band', x: 0.8, y: 5.95, w: 4.1, h: 0.62, rectRadius: 0.31, fill: { color: 'accent3' } });
label(slide, 'Offer Until', 'Today until 18:00', { x: 0.8, y: 5.95, w: 4.1, h: 0.62 }, { fontSize: 20, bold: true, color: 'bg1', align: 'center' });
slide.addShape('star24', { objectName: 'Saving star', x: 10.45, y: 0.55, w: 2.3, h: 2.3, rotate: 12, fill: { color: 'accent1' } });
label(slide, 'Offer Saving', '−25%', { x: 10.45, y: 0.55, w: 2.3, h: 2.3 }, { fontSize: 38, bold: true, color: 'bg1', align: 'center' });

const terracotta = { stops: [[0, 'accent1'], [100, 'accent4']], angle: 90 };
await save(deck, 'shop/shop.pptx', {
  colours, advance: [14, 14, 9], transition: '<p:push dir="u"/>', kiosk: false,
  gradients: [
    ['ppt/slideLayouts/slideLayout2.xml', 'Panel', terracotta],
    ['ppt/slideLayouts/slideLayout3.xml', null, { stops: [[0, 'bg1'], [100, 'accent5']], angle: 45 }],
  ],
});
