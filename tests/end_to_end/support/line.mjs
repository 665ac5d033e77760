import { connect, createServer } from "node:net";

// A line to a port: it may swallow everything without a word, and be cut.
export class Line {
  constructor(t, port) {
    this.pairs = new Set();
    this.isDead = false;
    this.isCut = false;
    this.server = createServer((near) => {
      if (this.isCut) return near.destroy();
      const far = connect(port, "127.0.0.1");
      const pair = [near, far];
      this.pairs.add(pair);
      for (const [from, to] of [pair, [far, near]]) {
        from.on("data", (data) => to.write(data)).on("error", () => {});
        from.on("close", () => to.destroy());
      }
      near.on("close", () => this.pairs.delete(pair));
      if (this.isDead) pair.forEach((end) => end.pause());
    });
    t.after(() => {
      this.server.close();
      this.cut();
    });
  }

  open() {
    return new Promise((resolve) => {
      this.server.listen(0, "127.0.0.1", () => {
        this.port = this.server.address().port;
        resolve();
      });
    });
  }

  swallow() {
    this.isDead = true;
    for (const pair of this.pairs) pair.forEach((end) => end.pause());
  }

  heal() {
    this.isDead = this.isCut = false;
    for (const pair of this.pairs) pair.forEach((end) => end.resume());
  }

  // With `stays` nobody comes through until it is mended.
  cut(stays = false) {
    this.isCut = stays;
    for (const pair of this.pairs) pair.forEach((end) => end.destroy());
  }
}
