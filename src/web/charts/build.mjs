// node build.mjs MODULES OUT: bundles chart.js with the parts of ECharts that it
// imports into OUT, and compressed into OUT.gz. MODULES is where npm has put them.

import { readFileSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { dirname, join, resolve } from "node:path";
import { fileURLToPath } from "node:url";
import { gzipSync } from "node:zlib";

const [modules, out] = process.argv.slice(2).map((path) => resolve(path));
const { build } = createRequire(join(modules, "build.cjs"))("esbuild");

// The libraries' notices travel with what is made of them.
const notice = (file) => readFileSync(join(modules, file), "utf8").trim();
const notices = `${notice("echarts/NOTICE")}

Licensed under the Apache License, Version 2.0 (https://www.apache.org/licenses/LICENSE-2.0).

zrender: ${notice("zrender/LICENSE")}`;

await build({
  entryPoints: [join(dirname(fileURLToPath(import.meta.url)), "chart.js")],
  nodePaths: [modules],
  outfile: out,
  bundle: true,
  minify: true,
  format: "iife",
  target: "es2022",
  legalComments: "inline",
  banner: { js: `/*!\n${notices.replaceAll("*/", "* /")}\n*/` },
});
// Without a date in it, so that equal scripts give equal programs.
writeFileSync(`${out}.gz`, gzipSync(readFileSync(out), { level: 9 }));
