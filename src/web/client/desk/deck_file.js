// The deck as a file, for authors whose PowerPoint is on another machine.

import { h } from "./dom.js";

const largest = 200 * 1024 * 1024;
const type = "application/vnd.openxmlformats-officedocument.presentationml.presentation";

export function createDeckFile({ state, server, tell, refused }) {
  async function download(path = "deck", name = state.deck.name) {
    try {
      const blob = await (await server.ask("GET", path)).blob();
      const address = URL.createObjectURL(blob);
      h("a", { href: address, download: name }).click();
      setTimeout(() => URL.revokeObjectURL(address), 60000);
    } catch (error) {
      refused(error);
    }
  }

  function upload() {
    const input = h("input", { type: "file", accept: `.pptx,.pptm,.ppsx,.ppt,.pps,.pot,${type}` });
    input.addEventListener("change", async () => {
      const [file] = input.files;
      if (!file) return;
      if (file.size > largest) return tell(`${file.name} is larger than 200 MB.`, "error");
      try {
        await server.ask("POST", "deck", { body: file });
      } catch (error) {
        refused(error);
      }
    });
    input.click();
  }
  return { download, upload };
}
