// node build.mjs MODULES OUT SUM: bundles chart.js with the parts of ECharts that it
// imports into OUT, whose first lines name SUM, the sum of what it is made of. The licences
// of what is inside are put beside it. MODULES is where npm has put the libraries.

import { readFileSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { dirname, join, resolve } from "node:path";
import { fileURLToPath } from "node:url";

const [modules, out] = process.argv.slice(2, 4).map((path) => resolve(path));
const sum = process.argv[4];
const { build } = createRequire(join(modules, "build.cjs"))("esbuild");

const text = (file) => readFileSync(join(modules, file), "utf8").trim();

// The libraries' notices travel with what is made of them.
const notices = `${text("echarts/NOTICE")}

Licensed under the Apache License, Version 2.0 (https://www.apache.org/licenses/LICENSE-2.0).

zrender: ${text("zrender/LICENSE")}`;

await build({
  entryPoints: [join(dirname(fileURLToPath(import.meta.url)), "chart.js")],
  nodePaths: [modules],
  outfile: out,
  bundle: true,
  minify: true,
  format: "iife",
  target: "es2022",
  legalComments: "inline",
  banner: { js: `/*! made of ${sum} */\n/*!\n${notices.replaceAll("*/", "* /")}\n*/` },
});

const licences = ["echarts/LICENSE", "echarts/NOTICE", "echarts/licenses/LICENSE-d3", "zrender/LICENSE", "tslib/LICENSE.txt"];
writeFileSync(
  out.replace(/\.min\.js$/, ".licences.txt"),
  licences.map((file) => `==== ${file} ====\n\n${text(file)}\n`).join("\n"),
);
