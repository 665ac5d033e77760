// The page of what is selected, at the right of the slide.

import { h, place, set } from "./dom.js";
import { FormView } from "./form_view.js";

export function createProperties(desk) {
  const { state, watch } = desk;
  const region = document.getElementById("properties");
  const title = h("h2", {}, h("span", { class: "name" }), h("span", { class: "subject" }));
  const body = h("div", { class: "body" });
  const none = h("p", { class: "note", text: "Select a shape to see what it is linked to." });
  region.append(title, body);
  let view = null;
  let orphan = null; // the page of a server that has gone
  let wished = ""; // a control that is to have the focus on the page that is on its way
  region.addEventListener("focusout", ({ relatedTarget }) => {
    if (relatedTarget && !region.contains(relatedTarget)) wished = "";
  });

  function draw() {
    const form = state.forms?.find(({ placement }) => placement === "docked");
    if (!form) {
      if (view && state.lost) return; // what stands there stays
      view?.close();
      view = null;
    } else if (view?.id === form.id && view.form.name === form.name) view.takeWhole(form);
    else {
      const held = region.contains(document.activeElement);
      const { scrollTop } = region;
      const focused = view?.focused();
      const old = orphan ?? null;
      view?.close();
      view = new FormView(desk, form);
      if (old?.form.name === form.name && old.form.subject === form.subject) view.session.recover(old.session, false);
      orphan = null;
      place(body, view.element);
      region.scrollTop = scrollTop;
      if (held) view.focusOn(wished || focused);
      wished = "";
    }
    set(title.firstElementChild, { text: view?.form.caption ?? "Properties" });
    set(title.lastElementChild, { text: view?.form.subject ?? "" });
    if (!view) place(body, none);
  }
  watch(["forms"], draw);

  return {
    find: (id) => (view?.id === id ? view : null),
    // The server has begun anew: the page that it makes takes over what was typed here.
    outlive() {
      orphan = view;
    },
    // The same server is back: what could not be sent is sent now.
    // Resolves when it was answered.
    resume: () => view?.session.flush(),
    isTyping: () => Boolean(view?.session.isTyping),
    // On a control by its name, also of the page that what was just selected brings; else on the first.
    focus(name = "") {
      wished = name;
      view?.focusOn(name);
    },
  };
}
