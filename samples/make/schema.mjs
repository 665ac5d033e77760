// Puts right what the generators write against the schemas of ECMA-376, which
// PowerPoint and Excel forgive and validators do not.

function changed(xml, pattern, replacement) {
  const result = xml.replace(pattern, replacement);
  if (result === xml) throw new Error(`nothing matches ${pattern}: the generator writes something else now`);
  return result;
}

// CT_Presentation: the notes master comes before the slides.
export const orderPresentation = (xml) =>
  changed(xml, /(<p:sldIdLst>.*?<\/p:sldIdLst>)(<p:notesMasterIdLst>.*?<\/p:notesMasterIdLst>)/s, '$2$1');

// CT_BarChart, CT_LineChart, CT_LineSer: a chart names its own axes alone, lines have a
// grouping and no fill to invert, and their markers come before their labels.
export function mendChart(xml) {
  const axes = new Set([...xml.matchAll(/<c:(?:cat|val|ser|date)Ax>\s*<c:axId val="(\d+)"/g)].map(([, id]) => id));
  return xml
    .replace(/<c:axId val="(\d+)"\/>/g, (element, id) => (axes.has(id) ? element : ''))
    .replace(/<c:lineChart>.*?<\/c:lineChart>/gs, (lines) =>
      lines
        .replace(/<c:lineChart>(?!<c:grouping)/, '<c:lineChart><c:grouping val="standard"/>')
        .replace(/<c:invertIfNegative [^>]*\/>/g, '')
        .replace(/(<c:dLbls>(?:(?!<c:marker>).)*<\/c:dLbls>)(<c:marker>.*?<\/c:marker>)/gs, '$2$1'));
}

// CT_Font, in the order that Excel writes.
export const orderFonts = (xml) =>
  changed(xml, /<font>(<name[^>]*\/>)(<sz[^>]*\/>)(<family[^>]*\/>)(<b\/>)?(<color[^>]*\/>)<\/font>/g,
    (_, name, size, family, bold = '', colour) => `<font>${bold}${size}${colour}${name}${family}</font>`);
