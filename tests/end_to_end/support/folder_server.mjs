// A folder behind a plain web server.

import { existsSync, readFileSync } from "node:fs";
import { createServer } from "node:http";
import { join } from "node:path";

export class FolderServer {
  // `t` is the context of the test, which ends it.
  constructor(t, folder) {
    this.folder = folder;
    t.after(() => this.stop());
  }

  // On the same port as before, so that who asked goes on.
  async start() {
    this.server = createServer((request, response) => {
      const path = join(this.folder, decodeURIComponent(new URL(request.url, this.url).pathname));
      if (existsSync(path)) response.end(readFileSync(path));
      else response.writeHead(404).end();
    });
    await new Promise((resolve) => this.server.listen(this.port ?? 0, "127.0.0.1", resolve));
    this.port = this.server.address().port;
    this.url = `http://127.0.0.1:${this.port}/`;
  }

  async stop() {
    if (!this.server?.listening) return;
    const ended = new Promise((resolve) => this.server.close(resolve));
    this.server.closeAllConnections();
    await ended;
  }
}
