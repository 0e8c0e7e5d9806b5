// SPDX-License-Identifier: MIT

// Takes the picture of the playground that the README shows: `node picture.mjs FILE`, with the folder of the page in PAGE, and in
// PLAYWRIGHT a folder that has Playwright among its modules.

import {createRequire} from "node:module";
import {join} from "node:path";
import {pathToFileURL} from "node:url";

const {chromium} = createRequire(join(process.env.PLAYWRIGHT, "/"))("playwright-core");
const browser = await chromium.launch({executablePath: "/usr/bin/chromium", args: ["--no-sandbox"]});
const page = await browser.newPage({viewport: {width: 1100, height: 900}});
const link = "#" + new URLSearchParams({example: "catalog", path: "//book[@lang]/title"});
await page.goto(pathToFileURL(join(process.env.PAGE, "index.html")) + link);
await page.waitForFunction(() => document.documentElement.dataset.shown);
await page.screenshot({path: process.argv[2], clip: {x: 0, y: 0, width: 1100, height: 810}});
await browser.close();
