// A form, drawn from its description: rows of a label and its fields, groups of rows, buttons.

import { controlFor } from "./form_controls.js";
import { accessKey, fill, freshId, h, mnemonic, set, withoutKey } from "./dom.js";
import { FormSession } from "./form_session.js";

export class FormView {
  #desk;
  #controls = new Map();
  #rows = [];

  constructor(desk, form) {
    this.#desk = desk;
    this.id = form.id;
    this.element = h("form", { class: `form ${form.width}`, novalidate: true, autocomplete: "off" });
    this.element.addEventListener("submit", (event) => event.preventDefault());
    this.session = new FormSession(form, {
      send: (json) => desk.server.post(`forms/${this.id}/events`, json),
      changed: (names) => this.#draw(names),
      refused: (error) => desk.refused(error),
    });
    this.element.addEventListener("keydown", (event) => this.#key(event));
    this.#build();
  }

  get form() {
    return this.session.form;
  }

  take({ ack, patch, focus, complain }) {
    this.session.take(patch ?? {}, ack ?? 0);
    const asked = complain || focus;
    if (asked) this.#controls.get(asked)?.focus();
  }

  takeWhole(form) {
    this.id = form.id;
    if (!this.session.takeWhole(form)) this.#build();
  }

  focusFirst() {
    const preferred = this.form.default && !this.#firstEmpty() ? this.#controls.get(this.form.default) : null;
    const first = preferred ?? this.#firstEmpty() ?? [...this.#controls.values()].find(({ isField }) => isField);
    first?.focus();
  }

  // The control that has the focus, by its name.
  focused() {
    for (const [name, { element }] of this.#controls) if (element.contains(document.activeElement)) return name;
    return "";
  }

  focusOn(name) {
    const control = this.#controls.get(name);
    if (control?.isField) control.focus();
    else this.focusFirst();
  }

  // A dialog that is filled in already has its default button focused.
  #firstEmpty() {
    for (const [name, control] of this.#controls) {
      const { kind, Visible } = this.form.controls[name];
      if (Visible && kind === "TextBox" && !this.session.get(name, "Text")) return control;
    }
    return null;
  }

  #build() {
    const { form, session } = this;
    this.#controls.clear();
    this.#rows = [];
    const buddies = new Map();
    for (const [name, { kind, Buddy }] of Object.entries(form.controls))
      if (kind === "UpDown") buddies.set(Buddy, name);
    const context = { session, desk: this.#desk, isWide: form.width === "wide" };
    const parts = [];
    let group = null;
    for (const row of form.rows) {
      const element = this.#buildRow(row, context, buddies);
      if (!element) continue;
      if (row.group) {
        if (group?.name !== row.group) {
          const legend = h("legend", { text: withoutKey(form.controls[row.group]?.Caption ?? "") });
          group = { name: row.group, element: h("fieldset", {}, legend) };
          parts.push(group.element);
        }
        group.element.append(element);
      } else {
        group = null;
        parts.push(element);
      }
    }
    this.element.replaceChildren(...parts);
    this.#draw(Object.keys(form.controls));
  }

  #buildRow(row, context, buddies) {
    const names = row.controls.filter((name) => this.form.controls[name]?.kind !== "UpDown");
    const controls = names.map((name, i) => {
      const control = controlFor(name, context, {
        updown: buddies.get(name),
        label: withoutKey(row.label ?? ""),
        isFirst: i === 0,
      });
      this.#controls.set(name, control);
      return control;
    });
    if (controls.length === 0) return null;
    if (row.isButtons) {
      const element = h(
        "div",
        { class: "buttons" },
        controls.map(({ element }) => element),
      );
      this.#rows.push({ element, names });
      return element;
    }
    const [first] = controls;
    const isTall = ["Grid", "ListBox"].includes(this.form.controls[names[0]].kind);
    const isField = first.labelled !== undefined;
    const label = row.label
      ? h(
          isField ? "label" : "span",
          { class: "label", for: isField ? first.labelled : null, id: freshId("label") },
          mnemonic(row.label),
        )
      : null;
    if (label && !isField) first.element.setAttribute("aria-labelledby", label.id);
    if (label) label.dataset.key = accessKey(row.label);
    const element = h(
      "div",
      { class: "row", "data-tall": isTall, "data-bare": !label },
      label,
      h(
        "div",
        { class: "fields" },
        controls.map((control) => control.element),
      ),
    );
    this.#rows.push({ element, names });
    return element;
  }

  #draw(names) {
    for (const name of names) this.#controls.get(name)?.draw(this.form.controls[name]);
    for (const row of this.#rows) {
      const isSeen = row.names.some((name) => this.form.controls[name].Visible);
      set(row.element, { hidden: !isSeen });
    }
  }

  #key(event) {
    const { form, session } = this;
    const press = (name) => {
      event.preventDefault();
      event.stopPropagation();
      this.#controls.get(name)?.press?.();
    };
    const isText = event.target.matches("textarea, button, [role=listbox], [aria-expanded=true]");
    if (event.key === "Enter" && !event.defaultPrevented && !isText && form.default) press(form.default);
    else if (event.key === "Enter" && event.target.matches("input") && !form.default) session.flush();
    else if (event.altKey && !event.ctrlKey && event.key.length === 1) {
      const key = event.key.toLowerCase();
      const label = [...this.element.querySelectorAll("[data-key]")].find(
        (each) => each.dataset.key === key && each.offsetParent,
      );
      if (!label) return;
      event.preventDefault();
      const control = label.matches("label") ? document.getElementById(label.htmlFor) : label;
      control?.focus();
      if (control?.matches("button")) control.click();
    }
  }

  get caption() {
    return this.form.caption;
  }

  close() {
    this.session.close();
    fill(this.element, [], () => "");
    this.element.remove();
  }
}
