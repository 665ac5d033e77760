// The script that draws charts is large, so it comes when a slide has one.

// Without the script a slide is shown without its charts, and the next one tries again.
export async function loadChartsFor(html) {
  if (customElements.get("deck-chart") || !html.includes("<deck-chart")) return;
  await import("../charts.js").catch(() => {});
}
