// A folder behind a plain web server: entity tags and ranges, as any of them has.

import { createHash } from "node:crypto";
import { existsSync, readFileSync } from "node:fs";
import { createServer } from "node:http";
import { join } from "node:path";

export class FolderServer {
  // `t` is the context of the test, which ends it.
  constructor(t, folder) {
    this.folder = folder;
    // {file, status, from} of each answer.
    this.answers = [];
    // Breaks the line in the middle of the next answer with such a file.
    this.breaksOnce = null;
    t.after(() => this.stop());
  }

  // On the same port as before, so that who asked goes on.
  async start() {
    this.server = createServer((request, response) => this.answer(request, response));
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

  answer(request, response) {
    const file = decodeURIComponent(new URL(request.url, this.url).pathname).slice(1);
    const path = join(this.folder, file);
    const send = (status, headers = {}, body = "") => {
      this.answers.push({ file, status, from: headers["Content-Range"] });
      response.writeHead(status, headers).end(body);
    };
    if (!existsSync(path)) return send(404);
    const bytes = readFileSync(path);
    const ETag = `"${createHash("sha256").update(bytes).digest("hex").slice(0, 16)}"`;
    if (request.headers["if-none-match"] === ETag) return send(304, { ETag });
    const from = Number(request.headers.range?.match(/^bytes=(\d+)-$/)?.[1] ?? 0);
    if (from > 0) {
      const range = `bytes ${from}-${bytes.length - 1}/${bytes.length}`;
      return send(206, { ETag, "Content-Range": range }, bytes.subarray(from));
    }
    if (this.breaksOnce?.test(file)) {
      this.breaksOnce = null;
      response.writeHead(200, { ETag, "Content-Length": bytes.length });
      return response.write(bytes.subarray(0, bytes.length / 2), () => response.destroy());
    }
    return send(200, { ETag, "Content-Length": bytes.length }, bytes);
  }
}
