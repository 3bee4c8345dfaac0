import assert from "node:assert/strict";
import { readFile, readdir } from "node:fs/promises";
import { join } from "node:path";
import { test } from "node:test";

import { startBrowserAndSite } from "./Setup.mjs";
import { fileAddress, siteFolder } from "./Site.mjs";

const setup = startBrowserAndSite();

/** Runs in the page, scrolled through once so that nothing is left unloaded. */
async function summary() {
    const images = [...document.images];
    await Promise.all(images.map((image) => image.decode()));
    return {
        pets: document.querySelectorAll("#pet-specimens article").length,
        characters: document.querySelectorAll(".characters li").length,
        pictures: images.filter((image) => image.naturalWidth > 0).length,
        degrees: document.getElementById("degrees").textContent,
    };
}

const complete = { pets: 4, characters: 4 * 16, pictures: 20, degrees: "52°C" };

test("the page is complete from a server, and asks nobody else for anything", async () => {
    const page = await setup.open("/");
    assert.deepEqual(await page.evaluate(summary), complete);
    await page.evaluate(() => manualClock.advance(60000));
    assert.deepEqual(page.errors, []);
    assert.deepEqual(
        page.requests.filter((url) => !url.startsWith(setup.address) && !url.startsWith("data:")),
        [],
    );
});

test("the page is complete from a file, and asks only for files beside it", async () => {
    const page = await setup.open(fileAddress);
    assert.deepEqual(await page.evaluate(summary), complete);
    await page.evaluate(() => manualClock.advance(60000));
    assert.deepEqual(page.errors, []);
    const folder = new URL(".", fileAddress).href;
    assert.deepEqual(
        page.requests.filter((url) => !url.startsWith(folder) && !url.startsWith("data:")),
        [],
    );
    assert.ok(page.requests.length > 20);
});

test("the script beside glyphs.json holds the same data", async () => {
    const read = (name) => readFile(join(siteFolder, name), "utf8");
    const data = new Function(`${await read("glyphs.js")} return glyphs;`)();
    assert.deepEqual(data, JSON.parse(await read("glyphs.json")));
});

test("the page draws what glyphs.json says: it has no art of its own", async () => {
    const read = (name) => readFile(join(siteFolder, name), "utf8");
    const glyphs = JSON.parse(await read("glyphs.json"));
    const art = glyphs.pets.flatMap((pet) => Object.values(pet.moods).flat());
    const files = [
        "index.html",
        "page.css",
        ...(await readdir(join(siteFolder, "readout"))).map((file) => `readout/${file}`),
    ];
    files.push(...(await readdir(join(siteFolder, "page"))).map((file) => `page/${file}`));
    assert.ok(files.length > 8 && art.length > 100);
    for (const name of files) {
        const text = await read(name);
        assert.deepEqual(
            art.filter((row) => text.includes(row)),
            [],
            name,
        );
    }
    const page = await setup.open("/");
    const shown = await page.evaluate(async () => {
        glyphs.fonts.arcade5x7.glyphs["5"].fill("#####");
        pageTools.setSlider(55);
        await null;
        return pageTools.rowsOf(document.getElementById("bar-readout"), 27).map((row) => row.slice(10, 15));
    });
    assert.deepEqual(shown, Array(7).fill("#####"));
});

test("links inside the page lead somewhere", async () => {
    const page = await setup.open("/");
    const dangling = await page.evaluate(async () => {
        const missing = [];
        for (const { hash, href } of document.links) {
            const found = hash ? document.querySelector(hash) : (await fetch(href)).ok;
            if (!found) {
                missing.push(href);
            }
        }
        return missing;
    });
    assert.deepEqual(dangling, []);
});
