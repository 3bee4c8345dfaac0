// What the tests of this folder start from: one browser for all files of a run, a page with tools and a clock that
// stands still.
import { readFile } from "node:fs/promises";
import { after, before } from "node:test";

import { Browser } from "./Browser.mjs";
import { Site } from "./Site.mjs";

const injected = Promise.all(
    ["ManualClock.js", "PageTools.js"].map((file) => readFile(new URL(file, import.meta.url), "utf8")),
);

/** By scale, each started when its first page is opened. */
const browsers = new Map();
after(() => Promise.all([...browsers.values()].map((browser) => browser.stop())));

/** Started before the tests and stopped after them. `extra` holds pages beside the site's own, by path. */
export function startBrowserAndSite(extra = {}) {
    const started = {};
    before(async () => {
        started.site = await Site.start(extra);
    });
    after(async () => {
        await started.site?.stop();
    });
    return {
        get address() {
            return started.site.address;
        },
        /** A fresh page at an address of the site, or at a full one. */
        async open(address, { scale = 1, ...settings } = {}) {
            if (!browsers.has(scale)) {
                browsers.set(scale, await Browser.start({ scale }));
            }
            const page = await browsers.get(scale).newPage({ before: (await injected).join("\n"), ...settings });
            await page.open(new URL(address, started.site.address).href);
            return page;
        },
    };
}
