// What `lumenfold hub-config` prints is what nginx takes, and lets in and out what it should.

import assert from "node:assert/strict";
import { execFileSync, spawnSync } from "node:child_process";
import { mkdirSync } from "node:fs";
import { test } from "node:test";
import { ask } from "../support/ask.mjs";
import { Node } from "../support/nginx_hub.mjs";
import { Reader } from "../support/hub_reader.mjs";
import { StandInShow } from "../support/hub_show.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { until } from "../support/wait.mjs";

// One node of a stand-in show.
async function start(t, ...args) {
  const sandbox = new Sandbox(t);
  const show = new StandInShow(t, "run");
  await show.open();
  const given = args.map((arg) => (typeof arg === "function" ? arg(sandbox) : arg));
  const node = new Node(t, sandbox, "Hall-1", ["--show", `http://127.0.0.1:${show.port}`, ...given]);
  await node.start();
  return { sandbox, show, node, get: (path, headers) => ask(node.where, "GET", path, { headers }) };
}

test("nginx takes every variant", (t) => {
  const sandbox = new Sandbox(t);
  const token = sandbox.write("token", "a.b+c/d~e_f-0123456789=\n");
  const pair = ["-keyout", sandbox.path("hub.key"), "-out", sandbox.path("hub.crt")];
  const request = "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj /CN=hub";
  execFileSync("openssl", [...request.split(" "), ...pair], { stdio: "ignore" });
  const tls = ["--tls", "--certificate", sandbox.path("hub.crt"), "--certificate-key", sandbox.path("hub.key")];
  const redis = ["--redis", "redis://:pass%20word@redis.example.org:6380/2"];
  const variants = [
    [],
    ["--plain"],
    ["--plain", ...tls, "--screens", "--operators"],
    [...redis, "--redis", "rediss://127.0.0.2", "--group", "departures-2", "--site", "Hall 1"],
    [...redis, ...tls, "--publish", "0.0.0.0:8090", "--publish-token-file", token, "--screens", "--operators"],
    ["--publish", "127.0.0.1:8090", "--publish-token-file", token, "--hub", "https://hub2.example.org", "--hub", "http://[fd00::2]:81"],
    ["--show", "https://localhost", "--listen", "8080", "--listen", "[::1]:8081", "--connections", 1000000],
  ];
  for (const variant of variants) {
    mkdirSync(sandbox.path("cache"), { recursive: true });
    const folders = ["--run-folder", sandbox.folder, "--cache-folder", sandbox.path("cache")];
    const text = sandbox.done("hub-config", ...folders, ...variant).replaceAll("/run/lumenfold-hub", sandbox.folder);
    const file = sandbox.write("hub.conf", text);
    const { status, stderr } = spawnSync("nginx", ["-t", "-p", sandbox.folder, "-c", file], { encoding: "utf8" });
    // It tries to listen, and there may be no IPv6, or the low ports be root's alone.
    const isWell = status === 0 || /bind\(\) to .* \((13: Perm|99: Cannot assign)|97: Address family/.test(stderr);
    assert.ok(isWell, `${variant.join(" ")}: ${stderr}`);
  }
});

test("values that would be more than values are refused", (t) => {
  const sandbox = new Sandbox(t);
  const token = sandbox.write("token", "0123456789abcdef\n");
  const refused = [
    [["--site", 'a"; } server { #'], 1, /is no name of a site/],
    [["--site", "a\nb"], 1, /is no name of a site/],
    [["--show", "127.0.0.1:2000"], 1, /is no address as http/],
    [["--show", "http"], 1, /is no address as http/],
    [["--show", "http://a b/"], 1, /is no address as http/],
    [["--show", "http://a:99999"], 1, /is no address as http/],
    [["--show", "http://[::1"], 1, /is no address as http/],
    [["--show", "http://["], 1, /is no address as http/],
    [["--hub", "https://hub/page"], 1, /is no address as http/],
    [["--redis", "127.0.0.1"], 1, /A Redis is given as redis:\/\//],
    [["--redis", "redis://[::1]"], 1, /is no server of a Redis/],
    [["--redis", "redis://:secret$word@h"], 1, /others as %XX/],
    [["--redis", "redis://h/x;"], 1, /is no server of a Redis/],
    [["--group", "a b"], 1, /is no name of a group/],
    [["--listen", "0"], 1, /is no place to listen at/],
    [["--listen", "host"], 1, /is no place to listen at/],
    [["--publish", "unix:publish.sock"], 1, /is no absolute path/],
    [["--cache-folder", "/a$b"], 1, /none of \\ \$ ; { }/],
    [["--publish", "127.0.0.1:8090"], 2, /needs --publish-token-file/],
    [["--publish", "10.0.0.1:8090", "--publish-token-file", token], 2, /needs --tls/],
    [["--publish", "localhost:8090", "--publish-token-file", token], 2, /needs --tls/],
    [["--publish-token-file", sandbox.write("short", "abc\n")], 1, /16 to 200/],
    [["--publish-token-file", sandbox.write("odd", '0123456789abcdef"$\n')], 1, /16 to 200/],
    [["--plain", "--redis", "redis://h"], 2, /--plain/],
    [["--certificate", "/a"], 2, /--tls/],
  ];
  for (const [args, code, why] of refused) {
    const ran = sandbox.run("hub-config", ...args);
    assert.equal(ran.code, code, args.join(" "));
    assert.match(ran.error, why);
    assert.equal(ran.out, "");
    assert.doesNotMatch(ran.error, /secret/);
  }
});

test("publishing takes the token, and screens cannot", async (t) => {
  const secret = "a.b+c/d~e_f-0123456789=";
  const { node, show } = await start(t, "--publish-token-file", (sandbox) => sandbox.write("token", `${secret}\n`));
  const publish = (token, body = "{}") =>
    ask(node.publishing, "POST", "/publish/show", { headers: token ? { Authorization: `Bearer ${token}` } : {}, body });
  assert.equal((await publish(secret)).status, 202);
  for (const wrong of ["", secret.toUpperCase(), secret.replace(".", "x"), `${secret}x`, `x${secret}`]) {
    assert.equal((await publish(wrong)).status, 401, wrong);
  }
  assert.equal((await publish(secret, "x".repeat(200 * 1024))).status, 202);
  assert.equal((await publish(secret, "x".repeat(300 * 1024))).status, 413);
  const authorised = { Authorization: `Bearer ${secret}`, "Content-Length": 2 };
  assert.equal((await ask(node.publishing, "GET", "/status", { headers: authorised })).status, 200);
  const outside = (method, path) => ask(node.where, method, path, { headers: authorised, body: "{}" });
  assert.equal((await outside("POST", "/publish/show")).status, 404);
  assert.equal((await outside("POST", "/screen/hub/show")).status, 403);
  for (const path of ["/api/v1/state", "/status", "/metrics", "/remote", "/readyz", "/screen/check", "/screen/events"]) {
    assert.equal((await outside("GET", path)).status, 404, path);
  }
  assert.deepEqual(show.asked, []);
});

test("pages of other sites are refused, those of other hubs may read", async (t) => {
  const { node, get } = await start(t, "--hub", "https://hub2.example.org");
  const from = async (Origin, path = "/screen/state/show") =>
    get(path, { ...(Origin && { Origin }), Accept: "text/event-stream", Connection: "close" });
  const own = await from("");
  assert.equal(own.status, 200);
  assert.equal(own.headers["lumenfold-hub"], "Hall-1");
  assert.equal((await from(node.url)).status, 200);
  assert.equal((await from(node.url.replace("http:", "https:"))).status, 200);
  for (const foreign of ["https://evil.example.org", "http://127.0.0.1:1", "null", `${node.url}.evil.org`]) {
    assert.equal((await from(foreign)).status, 403, foreign);
    assert.equal((await from(foreign, "/screen/hub/show")).status, 403, foreign);
  }
  const other = await from("https://hub2.example.org");
  assert.equal(other.headers["access-control-allow-origin"], "https://hub2.example.org");
  assert.equal(other.headers["access-control-allow-credentials"], "true");
  assert.match(other.headers["access-control-expose-headers"], /Lumenfold-Hub/);
  const headers = { Origin: "https://hub2.example.org" };
  const asked = await ask(node.where, "OPTIONS", "/screen/painted", { headers });
  assert.equal(asked.status, 204);
  assert.match(asked.headers["access-control-allow-headers"], /Content-Type/);
  const painted = await ask(node.where, "POST", "/screen/painted", { headers: { ...headers, "Content-Length": 2 }, body: "{}" });
  assert.equal(painted.text, "no origin"); // the show hears of none that it could refuse
  const stream = new Reader([node], "show", headers);
  t.after(() => stream.leave());
  await stream.come();
  assert.equal(stream.stream.headers["access-control-allow-origin"], "https://hub2.example.org");
});

test("known screens alone look, also while the show is away", async (t) => {
  const { show, get } = await start(t, "--screens");
  show.knownCookies.add("good");
  const as = (cookie) => ({ Cookie: `lumenfold_screen=${cookie}`, Accept: "text/event-stream" });
  assert.equal((await get("/screen/state/show")).status, 401);
  assert.equal((await get("/screen/state/show", as("bad"))).status, 401);
  assert.equal((await get("/screen/hub/show", as("bad"))).status, 401);
  // Others that the show lets look do not open the hub to all that have no cookie.
  assert.equal((await get("/screen/state/show", { Cookie: "pass-1=x" })).status, 401);
  assert.equal((await get("/screen/check", as("good"))).status, 204);
  assert.equal((await get("/screen/check", as("bad"))).status, 401);
  assert.equal((await get("/screen/state/show", as("good"))).status, 200);
  assert.equal((await get("/", as("good"))).text, "the slide");
  const stranger = await get("/");
  assert.deepEqual([stranger.status, stranger.text], [401, "who are you?"]); // the page that asks for the token
  assert.equal((await get("/", as("good"))).text, "the slide");
  assert.equal((await get("/assets/a.png", as("bad"))).status, 401);
  assert.notEqual((await get("/client/1/core/live.js")).status, 401);
  const checks = () => show.asked.filter((line) => line === "GET /screen/check").length;
  const before = checks();
  for (let i = 0; i < 20; ++i) await get("/assets/a.png", as("good"));
  assert.ok(checks() <= before + 1, "each look asks the show");
  await show.close();
  assert.equal((await get("/screen/state/show", as("good"))).status, 200);
  assert.notEqual((await get("/screen/state/show", as("stranger"))).status, 200);
});

test("a plain nginx passes a show's streams on", async (t) => {
  const sandbox = new Sandbox(t);
  const show = await sandbox.show(sandbox.sample("shop"));
  const node = new Node(t, sandbox, "front", ["--plain", "--operators", "--show", show.url.replace(/\/$/, "")]);
  await node.start();
  const page = await ask(node.where, "GET", "/");
  assert.equal(page.status, 200);
  const script = page.text.match(/src="(\/client\/[^"]+)"/)[1];
  assert.equal((await ask(node.where, "GET", script)).status, 200);
  assert.equal((await ask(node.where, "GET", "/api/v1/health")).status, 200);
  assert.equal((await ask(node.where, "GET", "/")).headers["lumenfold-hub"], undefined);
  const through = { ...show, port: node.port, logs: [] };
  const log = Object.getPrototypeOf(show).events.call(through, "/screen/events");
  t.after(() => log.close());
  await log.next("the picture", ({ event }) => event === "picture");
  await show.command("next");
  await until("the next slide", () => log.all.filter(({ event }) => event === "picture").length > 1);
});
