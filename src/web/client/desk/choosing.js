// Choosing a file or a folder of the machine that the desk runs on, below the folders that it may look into.

import { fill, freshId, h, set } from "./dom.js";
import { icon } from "./icons.js";

const size = (bytes) =>
  bytes < 1024
    ? `${bytes} B`
    : bytes < 1024 ** 2
      ? `${Math.round(bytes / 1024)} KB`
      : `${(bytes / 1024 ** 2).toFixed(1)} MB`;

// Resolves to {root, path}, or to null when nobody chose.
export async function chooseOnServer(desk, { title, what, kinds }) {
  const roots = (await desk.read("roots")) ?? [];
  if (roots.length === 0) return null;
  const isFolder = what === "folder";
  const wanted = isFolder ? "what=folder" : `kinds=${(kinds ?? []).flatMap(({ extensions }) => extensions).join(",")}`;

  return new Promise((resolve) => {
    const id = freshId("choose");
    const places = h("div", { class: "places", role: "listbox", "aria-label": "Folders of this desk" });
    const trail = h("p", { class: "trail" });
    const list = h("div", { class: "entries", role: "listbox", "aria-label": "Files", tabindex: "-1" });
    const note = h("p", { class: "hint" });
    const ok = h("button", { type: "button", class: "primary" }, isFolder ? "Use this folder" : "Choose");
    const cancel = h("button", { type: "button", class: "outlined" }, "Cancel");
    const element = h(
      "dialog",
      { class: "choosing wide", "aria-labelledby": id },
      h("header", {}, h("h2", { id, text: title || (isFolder ? "Choose a folder" : "Choose a file") })),
      h(
        "div",
        { class: "form" },
        h("div", { class: "browser" }, places, h("div", { class: "here" }, trail, list, note)),
        h("div", { class: "buttons" }, ok, cancel),
      ),
    );
    let root = roots[0];
    let path = "";
    let chosen = null;

    const join = (...parts) => parts.filter(Boolean).join("/");

    async function go(newRoot, newPath) {
      const answer = await desk.read(`roots/${newRoot.id}/files?path=${encodeURIComponent(newPath)}&${wanted}`);
      if (!answer) return;
      [root, path, chosen] = [newRoot, newPath, null];
      draw(answer);
      list.firstElementChild?.focus();
    }

    function draw({ entries, isCut }) {
      fill(
        places,
        roots,
        (each) => each.id,
        (each) =>
          h(
            "button",
            { type: "button", role: "option", title: each.path, onclick: () => go(each, "") },
            icon("folder"),
            each.name,
          ),
        (button, each) => set(button, { "aria-selected": String(each.id === root.id) }),
      );
      const steps = path ? path.split("/") : [];
      const step = (name, to) => h("button", { type: "button", class: "quiet", onclick: () => go(root, to) }, name);
      trail.replaceChildren(
        step(root.name, ""),
        ...steps.flatMap((name, i) => [" / ", step(name, steps.slice(0, i + 1).join("/"))]),
      );
      fill(
        list,
        entries,
        ({ name, isFolder: is }) => `${root.id} ${path} ${is} ${name}`,
        make,
        (line, entry) => set(line, { "aria-selected": String(entry === chosen) }),
      );
      [...list.children].forEach((line, i) => (line.tabIndex = i === 0 ? 0 : -1));
      set(note, {
        text: isCut
          ? "Only the first 1,000 are shown."
          : entries.length === 0
            ? isFolder
              ? "No folders in here."
              : "Nothing of this kind in here."
            : "",
        hidden: !isCut && entries.length > 0,
      });
      set(ok, { "aria-disabled": isFolder || chosen ? null : "true" });
    }

    function make(entry) {
      const line = h(
        "div",
        { class: "entry", role: "option" },
        icon(entry.isFolder ? "folder" : "file"),
        h("span", { text: entry.name }),
        h("small", { text: entry.isFolder ? "" : `${size(entry.size ?? 0)}   ${entry.changed ?? ""}` }),
      );
      const choose = () => {
        if (entry.isFolder) return;
        chosen = entry;
        for (const other of list.children) set(other, { "aria-selected": String(other === line) });
        set(ok, { "aria-disabled": null });
      };
      const take = () =>
        entry.isFolder ? go(root, join(path, entry.name)) : end({ root: root.id, path: join(path, entry.name) });
      line.addEventListener("click", () => (entry.isFolder ? take() : choose()));
      line.addEventListener("dblclick", take);
      line.addEventListener("focus", choose);
      line.addEventListener("keydown", (event) => {
        const next = { ArrowDown: line.nextElementSibling, ArrowUp: line.previousElementSibling }[event.key];
        if (next) next.focus();
        else if (event.key === "Enter") take();
        else if (event.key === "Backspace" && path) go(root, path.split("/").slice(0, -1).join("/"));
        else return;
        event.preventDefault();
      });
      return line;
    }

    function end(value) {
      element.close();
      element.remove();
      resolve(value);
    }
    ok.addEventListener("click", () => {
      if (isFolder) end({ root: root.id, path });
      else if (chosen) end({ root: root.id, path: join(path, chosen.name) });
    });
    cancel.addEventListener("click", () => end(null));
    element.addEventListener("cancel", (event) => {
      event.preventDefault();
      end(null);
    });
    document.body.append(element);
    element.showModal();
    go(root, "");
  });
}
