// What the page knows: the server's keys as it sends them (docs/desk-protocol.md), and the page's own:
//   chosen   {slide, shapes}: what is selected here, before the server has said so
//   tab      the connection whose rows are shown, or "check"
//   cursor   {connection, row, column} of the data
//   held     a column or cell that is about to be put on shapes, see linking.js
//   lit      what lies under the pointer: {shapes: [id…], cells: ["connection/column/row"…]}
//   traced   {connection, column or null} whose uses are shown, or null; see uses.js
//   lost     since when the server does not answer, or null
//   told     notices of the page itself
//   zoom     "fit", or a factor

export function createStore() {
  const state = {
    chosen: { slide: 0, shapes: [] },
    tab: "",
    cursor: null,
    held: null,
    traced: null,
    lit: { shapes: [], cells: [] },
    lost: null,
    told: [],
    zoom: "fit",
  };
  const watchers = [];
  return {
    state,
    // `handler` runs after each change of one of the keys.
    watch(keys, handler) {
      watchers.push({ keys: new Set(keys), handler });
    },
    // Takes new values of some keys.
    change(values) {
      const names = Object.keys(values);
      Object.assign(state, values);
      for (const { keys, handler } of watchers) {
        if (!names.some((name) => keys.has(name))) continue;
        try {
          handler(state);
        } catch (error) {
          reportError(error); // one panel's fault is not the others'
        }
      }
    },
  };
}

export const connectionOf = (state, number) => state.connections?.find((each) => each.number === number);
export const shapeOf = (state, id) => state.slide?.shapes.find((each) => each.id === id);
// A shape that a column can be put on.
export const takesColumn = (shape) => !shape.whyNot && (shape.shows === "text" || shape.shows === "picture");
