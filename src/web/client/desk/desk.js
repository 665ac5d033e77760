// The desk: one page, its panels, and what they have in common. What the server tells goes into the store, from
// which every panel draws what concerns it; what the user does goes to the server.

import { keptToken } from "../core/commands.js";
import { renewFor } from "../core/renewal.js";
import { commandOf } from "./bars.js";
import { chooseOnServer } from "./choosing.js";
import { createDeckFile } from "./deck_file.js";
import { createDialogs } from "./dialogs.js";
import { createFrames } from "./frames.js";
import { listenToKeys, showKeys } from "./keys.js";
import { createLinking } from "./linking.js";
import { openMenu } from "./menu.js";
import { createNotices } from "./notices.js";
import { createPanels } from "./panels.js";
import { createPicking } from "./picking.js";
import { createProperties } from "./properties.js";
import { createSearch } from "./search.js";
import { createSelection } from "./selection.js";
import { createServer } from "./server.js";
import { createShapeMenu } from "./shape_menu.js";
import { createShapes } from "./shapes.js";
import { createSlides } from "./slides.js";
import { createStage } from "./stage.js";
import { createStore } from "./store.js";
import { askForToken } from "./token.js";
import { createToolbar } from "./toolbar.js";
import { createTray } from "./tray.js";
import { createUses } from "./uses.js";
import { createWhy } from "./why.js";

const token = keptToken(sessionStorage);
const server = await createServer(token);
const store = createStore();
const { state } = store;
const desk = { ...store, server, openMenu, showKeys };

desk.refused = (error) => {
  if (error.status === 0) return; // that the server is away is said once, by the stream
  if (error.status === 401) return;
  desk.tell(error.message, error.status >= 500 ? "error" : "warning");
};

// Asks the server for something; what becomes of it comes by the stream. Resolves to the answer, or to null
// when it was refused, which has been said then.
desk.act = async (path, json) => {
  await desk.properties.resume(); // what was typed comes before what is done
  try {
    return await server.post(path, json);
  } catch (error) {
    desk.refused(error);
    return null;
  }
};

desk.read = async (path, { isQuiet } = {}) => {
  try {
    return await server.get(path);
  } catch (error) {
    if (!isQuiet) desk.refused(error);
    return null;
  }
};

// Presses a command of the system, as long as it is to be used.
desk.press = (id, index) => {
  const control = commandOf(state, id);
  if (control && !control.enabled) return desk.say(control.tip || `${control.caption} cannot be used now.`);
  return desk.act(`press/${encodeURIComponent(id)}`, index === undefined ? {} : { index });
};

// A command of the program's own.
desk.command = (name) => {
  const { enabled = true, reason } = state.commands?.[name] ?? {};
  if (!enabled) return desk.say(reason || "There is nothing to do.");
  return desk.act(`commands/${name}`);
};
desk.check = async () => {
  if (await desk.command("check")) desk.change({ tab: "check" });
};
desk.show = async () => {
  const answer = await desk.command("show");
  if (answer?.url) open(answer.url, "_blank", "noopener");
};

Object.assign(desk, createNotices(desk));
desk.selection = createSelection(desk);
desk.deckFile = createDeckFile(desk);
desk.stage = createStage(desk);
desk.frames = createFrames(desk, desk.stage);
desk.linking = createLinking(desk);
desk.picking = createPicking(desk, desk.stage, desk.frames);
desk.openShapeMenu = createShapeMenu(desk).open;
desk.uses = createUses(desk);
desk.slides = createSlides(desk);
desk.toolbar = createToolbar(desk);
desk.properties = createProperties(desk);
desk.dialogs = createDialogs(desk);
desk.shapes = createShapes(desk);
desk.tray = createTray(desk);
desk.search = createSearch(desk);
createWhy(desk, desk.stage.main);
const panels = createPanels(desk);
desk.goTo = panels.goTo;
desk.nextPanel = panels.next;
listenToKeys(desk);

const isTyping = () => desk.properties.isTyping() || desk.dialogs.isOpen();

// What the server has asked; it asks again whoever comes back.
const choices = new Set();
async function choose({ id, title, what, kinds }) {
  if (choices.has(id)) return;
  choices.add(id);
  const chosen = await chooseOnServer(desk, { title, what, kinds });
  choices.delete(id);
  desk.act(`choices/${id}`, chosen ?? {});
}

function takeState(fresh, isFirst) {
  const isNewServer = isFirst && state.assets !== undefined && state.assets !== fresh.assets;
  let origins = [];
  if (isNewServer) {
    desk.properties.outlive();
    origins = desk.dialogs.outlive();
  }
  const chosen = state.chosen;
  if (isFirst) store.change({ lost: null });
  store.change(fresh);
  if (isNewServer) {
    if (chosen.slide) {
      desk.change({ chosen });
      desk.selection.tellAgain();
    }
    for (const [path, json] of origins) desk.act(path, json);
  }
  if (isFirst && !isNewServer) {
    desk.properties.resume();
    desk.dialogs.resume();
  }
  if (fresh.version && !isTyping()) renewFor(fresh.version);
}

const handlers = {
  state: takeState,
  shapes: (changes) => desk.stage.changeShapes(changes),
  form: (message) => (desk.properties.find(message.form) ?? desk.dialogs.find(message.form))?.take(message),
  choose,
  say: ({ text }) => desk.say(text),
  uses: ({ connection }) => desk.uses.show(connection),
  open: ({ url }) => window.open(url, "_blank", "noopener"),
  download: ({ path, name }) => desk.deckFile.download(path, name),
};

const go = server.follow({
  taken: (event, data, isFirst) => handlers[event]?.(data, isFirst),
  lost: () => state.lost || desk.change({ lost: Date.now() }),
  denied: async () => {
    await askForToken(token);
    go();
  },
});
if (!token.get()) await askForToken(token);
go();

addEventListener("beforeunload", (event) => {
  if (isTyping() && state.lost) event.preventDefault();
});
