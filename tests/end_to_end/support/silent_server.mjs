// A database's server that takes connections and says nothing, until it lets them go.

import { createServer } from "node:net";

export class SilentServer {
  sockets = [];
  // While it does not, it lets everybody go at once.
  holds = true;

  static async start(t) {
    const silent = new SilentServer();
    const server = createServer((socket) => (silent.holds ? silent.sockets.push(socket) : socket.destroy()));
    await new Promise((resolve) => server.listen(0, "127.0.0.1", resolve));
    const { port } = server.address();
    silent.connectionString = `Driver={PostgreSQL Unicode};Servername=127.0.0.1;Port=${port};Database=x;UID=me`;
    t.after(() => {
      silent.letGo();
      server.close();
    });
    return silent;
  }

  letGo() {
    this.holds = false;
    for (const socket of this.sockets) socket.destroy();
  }
}
