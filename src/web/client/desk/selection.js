// Which slide and shapes are selected. The page shows at once what was chosen here, and tells the server; what
// the server says counts once it has answered all of that.

export function createSelection({ state, change, watch, act }) {
  let asked = 0;

  const isSame = (one, other) =>
    one.slide === other.slide &&
    one.shapes.length === other.shapes.length &&
    one.shapes.every((id) => other.shapes.includes(id));

  async function choose(slide, shapes) {
    const chosen = { slide, shapes: [...new Set(shapes)] };
    if (isSame(chosen, state.chosen)) return;
    change({ chosen });
    ++asked;
    await act("selection", chosen);
    --asked;
  }

  watch(["selection"], () => {
    if (asked === 0 && state.selection && !isSame(state.selection, state.chosen)) change({ chosen: state.selection });
  });

  return {
    // A slide, with nothing on it.
    slide: (slide) => choose(slide, []),
    shapes: (shapes) => choose(state.chosen.slide, shapes),
    on: choose,
    toggle(id) {
      const { slide, shapes } = state.chosen;
      return choose(slide, shapes.includes(id) ? shapes.filter((each) => each !== id) : [...shapes, id]);
    },
    // Of a slide by its place before or after the present one.
    step(places) {
      const at = state.slides.findIndex((each) => each.id === state.chosen.slide);
      const slide = state.slides[Math.max(0, Math.min(state.slides.length - 1, at + places))];
      return slide && choose(slide.id, []);
    },
    // The server forgets windows that were gone for long.
    tellAgain: () => act("selection", state.chosen),
  };
}
