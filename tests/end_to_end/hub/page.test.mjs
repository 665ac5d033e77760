// A show, two nodes and a screen in a browser, as they will stand: what changes, what goes, and where the screen goes then.

import assert from "node:assert/strict";
import { test } from "node:test";
import { isUntouched, openScreen, useBrowser, waitForSlide, waitForText } from "../support/browser.mjs";
import { elementId } from "../support/deck.mjs";
import { freePort } from "../support/hub.mjs";
import { Node, Redis } from "../support/nginx_hub.mjs";
import { setValues, valueDeck } from "../support/value_deck.mjs";
import { until } from "../support/wait.mjs";

useBrowser();

// Two nodes, and the options by which a show publishes there. `more` are those of hub-config.
async function twoNodes(t, sandbox, hosts, ...more) {
  const redis = new Redis(t, sandbox);
  await redis.start();
  const port = await freePort();
  const token = sandbox.write("publish.token", "0123456789abcdef0123\n");
  const nodes = [];
  for (const name of ["one", "two"]) {
    const node = new Node(t, sandbox, name, ["--show", `http://127.0.0.1:${port}`, "--redis", `redis://127.0.0.1:${redis.port}`, ...more]);
    node.port = await freePort();
    node.host = hosts[nodes.length];
    nodes.push(node);
  }
  const origins = nodes.flatMap(({ url }) => ["--hub", url]);
  for (const node of nodes) {
    node.args.push(...origins, "--publish-token-file", token);
    await node.start();
  }
  const publish = nodes.flatMap(({ publishing }) => ["--publish", `unix:${publishing.socketPath}:/publish`]);
  return { redis, nodes, options: ["--port", port, ...publish, "--publish-token-file", token, ...origins] };
}

test("a screen follows a show by way of nginx, and to another node", async (t) => {
  const { sandbox, deck } = valueDeck(t, "first");
  const item = elementId(deck, 1, "p1 Item");
  const { redis, nodes, options } = await twoNodes(t, sandbox, ["127.0.0.1", "127.0.0.1"]);
  let show = await sandbox.show(deck, ...options);

  const page = await openScreen(t, `${nodes[0].url}/`);
  await waitForText(page, item, "first");
  await until("its report", async () => (await show.health()).screensAtHubs === 1);
  setValues(sandbox, "second");
  await waitForText(page, item, "second");
  await show.command("next");
  await waitForSlide(page, 2);
  await show.command("previous");
  await waitForSlide(page, 1);
  assert.equal((await show.health()).screens.filter(({ hub }) => !hub).length, 0);

  // A show that begins anew is taken up where the page stands.
  await show.stop("SIGKILL");
  setValues(sandbox, "third");
  show = await sandbox.show(deck, ...options);
  await waitForText(page, item, "third");
  setValues(sandbox, "fourth");
  await waitForText(page, item, "fourth");
  assert.ok(await isUntouched(page));

  await redis.kill();
  setValues(sandbox, "fifth");
  await show.shows(1, "p1 Item", "fifth");
  await redis.start();
  await waitForText(page, item, "fifth");

  await nodes[0].kill();
  setValues(sandbox, "sixth");
  await page.waitForURL(`${nodes[1].url}/`);
  await waitForText(page, item, "sixth");
  setValues(sandbox, "seventh");
  await waitForText(page, item, "seventh");
});

test("a known screen is set up at all nodes, and goes over", async (t) => {
  const { sandbox, deck } = valueDeck(t, "first");
  const item = elementId(deck, 1, "p1 Item");
  const list = sandbox.path("screens.txt");
  const [, token] = sandbox.done("screen", "add", "HALL1", "--screens", list).match(/#token=(\S+)/);
  // Cookies know no ports: each node has a name of its own.
  const { nodes, options } = await twoNodes(t, sandbox, ["one.hubs.localhost", "two.hubs.localhost"], "--screens");
  const show = await sandbox.show(deck, "--screens", list, ...options);

  const page = await openScreen(t, "about:blank");
  await page.goto(`${nodes[0].url}/#token=${token}`, { waitUntil: "commit" });
  await until("its report", async () => (await show.health()).screensAtHubs === 1);
  await nodes[0].kill();
  setValues(sandbox, "second");
  await page.waitForURL(`${nodes[1].url}/`);
  await waitForText(page, item, "second");
});
