// Where a connection, or one of its columns, is shown: its shapes on the slide are selected, and the other slides with
// such shapes are marked, until something else is selected. Another slide that is gone to shows its own.

export function createUses(desk) {
  const { state, watch, change, say } = desk;
  let at = 0; // the slide whose shapes have been selected for it

  const ofSlides = (connection, column) => state.uses?.[connection]?.[column ?? ""] ?? {};
  const sum = (counts) => counts.reduce((all, count) => all + count, 0);
  const isShown = ({ connection, column }, { link }) =>
    link?.connection === connection && (column === null || link.column?.toLowerCase() === column.toLowerCase());

  const here = () => state.slide.shapes.filter((shape) => isShown(state.traced, shape)).map(({ id }) => id);

  function words({ connection, column }) {
    const places = Object.entries(ofSlides(connection, column));
    const what = column === null ? connection : `${column} of ${connection}`;
    if (places.length === 0) return `No shape shows ${what}.`;
    const numbers = places.map(([id]) => state.slides.find((slide) => slide.id === Number(id))?.index);
    const shapes = sum(places.map(([, count]) => count));
    return `${what} is shown by ${shapes} ${shapes === 1 ? "shape" : "shapes"} on slide${numbers.length === 1 ? "" : "s"} ${numbers.join(", ")}.`;
  }

  watch(["slide", "chosen"], () => {
    const { traced, slide, chosen } = state;
    if (!traced || slide?.id !== chosen.slide) return;
    const shapes = here();
    if (at !== slide.id) {
      at = slide.id;
      desk.selection.shapes(shapes);
    } else if (shapes.length !== chosen.shapes.length || !shapes.every((id) => chosen.shapes.includes(id)))
      change({ traced: null });
  });

  return {
    // How many shapes of all slides.
    count: (connection, column = null) => sum(Object.values(ofSlides(connection, column))),
    // Of a slide, while they are shown.
    countOn: (slide) => (state.traced ? (ofSlides(state.traced.connection, state.traced.column)[slide] ?? 0) : 0),
    show(connection, column = null) {
      at = 0;
      change({ traced: { connection, column } });
      change({ chosen: state.chosen });
      say(words(state.traced ?? { connection, column }));
    },
    // The item of a menu.
    item(connection, column = null) {
      const count = this.count(connection, column);
      return {
        text: `Show uses (${count})`,
        enabled: count > 0,
        reason: "No shape shows it.",
        run: () => this.show(connection, column),
      };
    },
  };
}
