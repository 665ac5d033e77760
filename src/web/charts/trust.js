// Pages make elements of trusted texts alone (Trusted Types). Of a chart's, these are the ones.

const types = globalThis.trustedTypes;
const policy = types?.createPolicy("charts", { createHTML: (html) => html });

export const trusted = (html) => policy?.createHTML(html) ?? html;

// ECharts empties what it has drawn in by an empty text.
types?.createPolicy("default", { createHTML: (html) => (html === "" ? html : null) });
