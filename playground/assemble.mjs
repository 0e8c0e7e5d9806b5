// SPDX-License-Identifier: MIT

// Puts the playground together: `node assemble.mjs FOLDER MODULE` writes index.html, playground.css and playground.js into the
// folder, with the module MODULE.wasm and its script MODULE.js inside playground.js, since a page that is opened from a file may
// not load anything; quxml.wasm stands beside them for those who want the module alone.

import {copyFileSync, mkdirSync, readFileSync, writeFileSync} from "node:fs";
import {dirname, join} from "node:path";
import {fileURLToPath} from "node:url";

const here = dirname(fileURLToPath(import.meta.url));
const top = dirname(here);
const [folder, module] = process.argv.slice(2);

const read = (name) => readFileSync(join(here, name), "utf8");

/// What the page has to choose from: a name for links, a title, a file, and a path to begin with.
const examples = [
    ["catalog", "The catalogue", "examples/catalog.xml", "catalog/book[@lang='de']"],
    ["device", "A device's settings", "examples/device.xml", "//sensor[@type =temperature]"],
    ["users", "Users with items", "examples/ports/users.xml", "users/user[7]"],
    ["orders", "Orders, nested", "examples/ports/orders.xml", "orders//order[@region =north]"],
    ["fonts", "Fonts, with comments", "examples/fonts.conf", "fontconfig/match/edit[last()]"],
    ["dropped", "What reading drops", "tests/data/dropped.xml", "r/*[position()>2]"],
].map(([name, title, file, path]) => ({name, title, path, text: readFileSync(join(top, file), "utf8")}));

// The worker's source is made a text, because only so can a page from a file start it.
const worker = readFileSync(module + ".js", "utf8") + read("worker.js");
const script = [
    `const examples = ${JSON.stringify(examples)};`,
    `const workerSource = ${JSON.stringify(worker)};`,
    `const wasm = "${readFileSync(module + ".wasm").toString("base64")}";`,
    read("page.js"),
];

mkdirSync(folder, {recursive: true});
writeFileSync(join(folder, "playground.js"), script.join("\n"));
copyFileSync(join(here, "page.html"), join(folder, "index.html"));
copyFileSync(join(here, "playground.css"), join(folder, "playground.css"));
copyFileSync(module + ".wasm", join(folder, "quxml.wasm"));
