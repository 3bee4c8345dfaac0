// takePictures.mjs DIRECTORY: pictures of the assembled page, for eyes.
import { writeFile } from "node:fs/promises";
import { join } from "node:path";

import { Browser } from "./Browser.mjs";
import { fileAddress } from "./Site.mjs";

const directory = process.argv[2];
const screens = {
    phone: { width: 390, height: 844, scale: 2 },
    tablet: { width: 820, height: 1180, scale: 2 },
    desktop: { width: 1280, height: 900, scale: 1 },
};
const schemes = ["light", "dark"];
const scenes = { cold: 30, comfy: 52, toasty: 74, burning: 93 };

async function write(name, png) {
    await writeFile(join(directory, `web-${name}.png`), png);
}

async function show(page, celsius) {
    await page.evaluate(async (chosen) => {
        const slider = document.getElementById("celsius");
        slider.value = chosen;
        slider.dispatchEvent(new InputEvent("input", { bubbles: true }));
        await Promise.all([...document.images].map((image) => image.decode()));
        await new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(() => done())));
    }, celsius);
}

for (const [screen, { scale, ...size }] of Object.entries(screens)) {
    const browser = await Browser.start({ scale });
    for (const scheme of schemes) {
        const page = await browser.newPage({ ...size, scheme, motion: "reduce" });
        await page.open(fileAddress);
        for (const [scene, celsius] of Object.entries(scenes)) {
            await show(page, celsius);
            await write(`${screen}-${scheme}-${scene}`, await page.screenshot());
        }
        await show(page, scenes.comfy);
        const height = await page.evaluate(() => document.documentElement.scrollHeight);
        await page.resize({ ...size, height });
        await show(page, scenes.comfy);
        await write(`${screen}-${scheme}-page`, await page.screenshot());
    }
    await browser.stop();
}
