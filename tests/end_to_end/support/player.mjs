// A running player: a show whose decks come from a folder.

import { Show } from "./show.mjs";

export class Player extends Show {
  static verb = "play";

  // What it says of its decks: {decks, changes, problem}.
  async folder() {
    return (await this.health()).player;
  }

  // The state of a deck, nothing when it is not known.
  async stateOf(name) {
    return (await this.folder()).decks.find((deck) => deck.name === name)?.state;
  }

  // The name of the deck on show; nothing on a plain ground.
  async deck() {
    return (await this.state()).deck?.match(/([^/]+)\.pptx$/)[1];
  }
}
