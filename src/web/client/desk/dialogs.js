// Dialogs: forms that stand by themselves, and the page's own questions. Nothing but their buttons and Esc ends them.

import { freshId, h, set } from "./dom.js";
import { FormView } from "./form_view.js";
import { icon } from "./icons.js";

export function frame(caption, width, body) {
  const id = freshId("title");
  const close = h("button", { type: "button", class: "quiet square close", "aria-label": "Close" }, icon("close"));
  const element = h(
    "dialog",
    { class: width, "aria-labelledby": id },
    h("header", {}, h("h2", { id, text: caption }), close),
    body,
  );
  document.body.append(element);
  return { element, close };
}

// A question of the page's own: resolves to the value of the button that was pressed, or null.
export function ask({ caption, text, body = [], buttons, width = "narrow" }) {
  return new Promise((resolve) => {
    const row = h("div", { class: "buttons" });
    const { element, close } = frame(
      caption,
      width,
      h("div", { class: "form" }, text ? h("p", { text }) : null, body, row),
    );
    const end = (value) => {
      element.close();
      element.remove();
      resolve(value);
    };
    for (const { caption: name, value, isPrimary } of buttons) {
      row.append(
        h(
          "button",
          {
            type: "button",
            class: isPrimary ? "primary" : "outlined",
            onclick: () => end(typeof value === "function" ? value() : value),
          },
          name,
        ),
      );
    }
    close.addEventListener("click", () => end(null));
    element.addEventListener("cancel", (event) => {
      event.preventDefault();
      end(null);
    });
    element.addEventListener("keydown", (event) => {
      if (event.key === "Enter" && event.target.matches("input")) row.querySelector(".primary")?.click();
    });
    element.showModal();
    (element.querySelector("input") ?? row.querySelector(".primary"))?.focus();
  });
}

export function createDialogs(desk) {
  const { state, watch } = desk;
  let open = []; // {view, element, origin}
  let orphans = [];

  // Where something was typed that the form does not keep, it asks.
  async function cancel(dialog) {
    const { view } = dialog;
    if (view.session.isTouched && !view.form.keepsAtOnce) {
      const answer = await ask({
        caption: view.caption,
        text: "What was changed here is given up.",
        buttons: [
          { caption: "Give up", value: true },
          { caption: "Go on editing", value: false, isPrimary: true },
        ],
      });
      if (!answer) return;
    }
    if (orphans.includes(dialog)) {
      orphans = orphans.filter((each) => each !== dialog);
      return end(dialog);
    }
    desk.act(`forms/${view.id}/close`);
  }

  function end({ view, element }) {
    view.close();
    if (element.open) element.close();
    element.remove();
  }

  function show(form) {
    const view = new FormView(desk, form);
    const { element, close } = frame(form.caption, form.width, view.element);
    const dialog = { view, element, origin: desk.server.opening() };
    element.addEventListener("cancel", (event) => {
      if (event.target !== element) return;
      event.preventDefault();
      cancel(dialog);
    });
    close.addEventListener("click", () => cancel(dialog));
    element.showModal();
    view.focusFirst();
    return dialog;
  }

  // A form that the server has made again takes the place of the one of before.
  function recover(form) {
    const orphan = orphans.find(({ view }) => view.form.name === form.name);
    const dialog = show(form);
    if (!orphan) return dialog;
    orphans = orphans.filter((each) => each !== orphan);
    dialog.origin = orphan.origin;
    dialog.view.session.recover(orphan.view.session, true);
    end(orphan);
    return dialog;
  }

  watch(["forms"], () => {
    const forms = (state.forms ?? []).filter(({ placement }) => placement === "dialog");
    const kept = [];
    for (const form of forms) {
      const dialog = open.find(({ view }) => view.id === form.id && view.form.name === form.name);
      if (dialog) {
        dialog.view.takeWhole(form);
        set(dialog.element.querySelector("h2"), { text: form.caption });
      }
      kept.push(dialog ?? recover(form));
    }
    for (const dialog of open) if (!kept.includes(dialog)) end(dialog);
    open = kept;
  });

  return {
    find: (id) => open.find(({ view }) => view.id === id)?.view,
    // The server has begun anew: what had opened the dialogs is asked for once more.
    outlive() {
      orphans.push(...open);
      open = [];
      return orphans.map(({ origin }) => origin).filter(Boolean);
    },
    resume: () => open.forEach(({ view }) => view.session.flush()),
    isOpen: () => open.length + orphans.length > 0,
  };
}
