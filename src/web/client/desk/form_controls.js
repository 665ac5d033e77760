// The controls of forms, one function for each kind: {element, draw(properties), focus(), labelled: the id that a label
// names, isField, press()}.

import { createCombobox } from "./combobox.js";
import { accessKey, enable, fill, freshId, h, isUsable, mnemonic, set, withoutKey } from "./dom.js";
import { createList } from "./form_lists.js";
import { createPreview } from "./form_preview.js";

const severities = ["plain", "ok", "warning", "error"];

// A control that is a field, and what stands below it: a hint, what is wrong with it, and what became of it elsewhere
// while it is typed in. `row` is absent where the field bears its own words.
function fieldControl(name, session, { field, input, row, draw, focus = () => input.focus() }) {
  const hint = h("p", { class: "hint", id: `${input.id}-hint` });
  const problem = h("p", { class: "problem", id: `${input.id}-problem` });
  const other = h("span");
  const take = h("button", { type: "button", class: "outlined", onclick: () => session.takeElsewhere(name) }, "Take");
  take.addEventListener("pointerdown", (event) => event.preventDefault()); // the field keeps the focus
  const elsewhere = h("p", { class: "elsewhere", role: "status" }, other, take);
  const element = h("div", { class: "control" }, field, elsewhere, hint, problem);
  element.addEventListener("focusout", ({ relatedTarget }) => {
    if (!element.contains(relatedTarget)) session.forgetElsewhere(name);
  });
  const drawNotes = ({ Hint = "", Problem = "", Enabled, Reason = "", Visible }) => {
    const value = session.elsewhere(name);
    set(other, { text: value === null ? "" : `changed elsewhere to '${value}'` });
    set(elsewhere, { hidden: value === null });
    set(element, { hidden: !Visible });
    set(hint, { text: Enabled ? Hint : Reason || Hint, hidden: !(Enabled ? Hint : Reason || Hint) });
    set(problem, { text: Problem, hidden: !Problem });
    const notes = [Problem && problem.id, !hint.hidden && hint.id].filter(Boolean).join(" ");
    set(input, {
      "aria-invalid": Problem ? "true" : null,
      "aria-describedby": notes || null,
      "aria-disabled": Enabled ? null : "true",
    });
  };
  if (row && !row.isFirst) set(input, { "aria-label": row.label });
  return {
    element,
    isField: true,
    labelled: row && input.id,
    draw(state) {
      drawNotes(state);
      draw(state, element);
    },
    focus,
  };
}

function label(name) {
  const element = h("output", { class: "label-of" });
  return {
    element,
    draw({ Text = "", Severity = 0, Visible, Hint = "" }) {
      set(element, {
        hidden: !Visible || (!Text && !Hint),
        "data-severity": severities[Severity] ?? "plain",
        "data-control": name,
      });
      fill(
        element,
        [Text, Hint].filter(Boolean),
        (_, i) => i,
        () => h("span"),
        (span, text) => set(span, { text }),
      );
    },
    focus() {},
  };
}

function textBox(name, { session }, row) {
  const { updown } = row;
  const id = freshId(name);
  const properties = session.form.controls[name];
  const input =
    (properties.Lines ?? 1) > 1
      ? h("textarea", { id, rows: properties.Lines, spellcheck: "false" })
      : h("input", { id, type: "text", spellcheck: "false" });
  const unit = h("span", { class: "unit" });
  const stepper = updown && stepButtons(updown, session, input);
  const field = h("div", { class: "field" }, input, unit, stepper);
  input.addEventListener("input", () => session.type(name, input.value));
  input.addEventListener("blur", () => session.leave(name));
  if (updown) {
    input.addEventListener("keydown", (event) => {
      const step = { ArrowUp: 1, ArrowDown: -1, PageUp: 10, PageDown: -10 }[event.key];
      if (!step || event.altKey || event.ctrlKey) return;
      event.preventDefault();
      session.raise(updown, "step", step);
    });
  }
  return fieldControl(name, session, {
    field,
    input,
    row,
    draw(state) {
      set(input, { placeholder: state.Placeholder || null, readonly: !state.Enabled });
      if (input.localName === "input")
        set(input, { type: state.Secret ? "password" : "text", inputmode: updown ? "numeric" : null });
      set(input, { value: session.get(name, "Text") ?? "" });
      set(unit, { text: state.Unit ?? "", hidden: !state.Unit });
    },
    focus() {
      input.focus();
      input.select();
    },
  });
}

function stepButtons(name, session, input) {
  const button = (step, text, title) =>
    h(
      "button",
      {
        type: "button",
        tabindex: "-1",
        "aria-label": title,
        onclick: () => isUsable(input) && session.raise(name, "step", step),
      },
      text,
    );
  return h("span", { class: "steps" }, button(1, "▴", "One more"), button(-1, "▾", "One less"));
}

function comboBox(name, { session }, row) {
  const properties = session.form.controls[name];
  if (properties.IsEditable) {
    const combobox = createCombobox(freshId(name), {
      typed: (text) => session.type(name, text),
      chosen: (text) => session.raise(name, "change", text),
      left: () => session.leave(name),
      opened: () => session.raise(name, "dropdown"),
    });
    return fieldControl(name, session, {
      field: combobox.element,
      input: combobox.input,
      row,
      draw(state) {
        set(combobox.input, { readonly: !state.Enabled, placeholder: state.Placeholder || null });
        combobox.draw(
          state.Items ?? [],
          session.get(name, "Text") ?? "",
          state.ListState ?? 0,
          state.ListProblem ?? "",
          state.NotesFirst,
        );
      },
    });
  }
  const select = h("select", { id: freshId(name) });
  const field = h("div", { class: "field" }, select);
  select.addEventListener("change", () => session.raise(name, "change", select.value));
  const open = () => session.raise(name, "dropdown");
  select.addEventListener("pointerdown", open);
  select.addEventListener("keydown", (event) => (event.key === " " || event.key === "Enter" || event.altKey) && open());
  return fieldControl(name, session, {
    field,
    input: select,
    row,
    draw(state, element) {
      const text = session.get(name, "Text") ?? "";
      const items = [...(state.Items ?? [])];
      // A text that is no item stays, as one that is missing.
      const isMissing = !items.some((item) => item.text === text);
      if (isMissing)
        items.unshift({
          text,
          note: text && !text.startsWith("(") && state.ListState !== 1 ? "missing" : "",
          enabled: true,
        });
      fill(
        select,
        items,
        ({ text: each }, i) => `${i} ${each}`,
        () => h("option"),
        (option, item) => {
          set(option, {
            value: item.text,
            text: item.note ? `${item.text} (${item.note})` : item.text,
            disabled: item.enabled === false,
            hidden: isMissing && item.text === text && !text,
          });
        },
      );
      if (select.value !== text) select.value = text;
      set(select, {
        disabled: !state.Enabled,
        "data-missing": isMissing && Boolean(text),
        "aria-busy": state.ListState === 1 ? "true" : null,
      });
      set(element, { "data-failed": state.ListState === 2, title: state.ListState === 2 ? state.ListProblem : null });
    },
  });
}

function tick(type, name, { session }) {
  const input = h("input", {
    id: freshId(name),
    type,
    name: type === "radio" ? `${session.form.id}-${session.form.controls[name].Group}` : null,
  });
  const text = h("span");
  const field = h("label", { class: "tick" }, input, text);
  input.addEventListener("click", (event) => {
    if (!isUsable(input)) event.preventDefault();
    else session.raise(name, "change", input.checked);
  });
  return fieldControl(name, session, {
    field,
    input,
    draw(state) {
      text.replaceChildren(...mnemonic(state.Caption ?? ""));
      set(input, { checked: Boolean(session.get(name, "Value")), "data-key": accessKey(state.Caption ?? "") || null });
      input.indeterminate = Boolean(state.Mixed);
    },
  });
}

async function copy(text, beside) {
  try {
    await navigator.clipboard.writeText(text);
  } catch {
    // Pages of another machine have no clipboard without TLS, but may copy what is selected.
    const area = h("textarea", { class: "said" });
    area.value = text;
    beside.after(area);
    area.select();
    document.execCommand("copy");
    area.remove();
    beside.focus();
  }
}

function commandButton(name, { session }) {
  const { form } = session;
  const button = h("button", { type: "button", class: name === form.default ? "primary" : "outlined" });
  const press = () => {
    if (!isUsable(button)) return;
    const text = session.get(name, "Copies");
    if (text) copy(text, button);
    session.raise(name, "click");
  };
  button.addEventListener("click", press);
  return {
    element: button,
    draw(state) {
      set(button, {
        hidden: !state.Visible,
        "data-brief": (state.Caption ?? "").endsWith("…"),
        "data-key": accessKey(state.Caption ?? "") || null,
        "aria-label": withoutKey(state.Caption ?? "") === "…" ? state.Hint || "More" : null,
      });
      button.replaceChildren(h("span", {}, mnemonic(state.Caption ?? "")));
      enable(button, state.Enabled, state.Reason);
      if (state.Enabled) set(button, { title: state.Hint || withoutKey(state.Caption ?? "") });
    },
    focus: () => button.focus(),
    press,
  };
}

function picture() {
  const image = h("img", { alt: "" });
  const element = h("figure", { class: "picture" }, image);
  return {
    element,
    draw({ File = "", Visible, Hint = "" }) {
      set(element, { hidden: !Visible || !File });
      set(image, { alt: Hint || "The picture as it is found" });
      const address = File && (File.startsWith("/") ? File : `/${File}`);
      if (address && image.getAttribute("src") !== address) image.src = address;
    },
    focus() {},
  };
}

function progressBar(name) {
  const bar = h("progress");
  const text = h("span");
  const element = h("div", { class: "progress", role: "group", "aria-label": "Progress" }, bar, text);
  return {
    element,
    draw({ Step = 0, Maximum = 0, Text = "", Visible }) {
      set(element, { hidden: !Visible, "data-control": name });
      set(bar, { max: Maximum || null, "aria-label": Text || "Progress" });
      if (Maximum) bar.value = Step;
      else bar.removeAttribute("value");
      set(text, { text: Text });
    },
    focus() {},
  };
}

const kinds = {
  Label: label,
  TextBox: textBox,
  ComboBox: comboBox,
  CheckBox: (...given) => tick("checkbox", ...given),
  OptionButton: (...given) => tick("radio", ...given),
  ListBox: createList,
  Grid: createPreview,
  CommandButton: commandButton,
  Picture: picture,
  ProgressBar: progressBar,
};

// Of a kind that this page does not know nothing is drawn.
export function controlFor(name, context, row) {
  const make = kinds[context.session.form.controls[name]?.kind];
  return make ? make(name, context, row) : { element: h("span"), draw() {}, focus() {} };
}
