// The example of the README, word for word, on a page beside what the program exports.
import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { test } from "node:test";

import { startBrowserAndSite } from "./Setup.mjs";
import { expectations } from "./Site.mjs";

const readme = await readFile(new URL("../../README.md", import.meta.url), "utf8");
const [, example] = readme.match(/^```html\n(.*?)^```$/ms);
const setup = startBrowserAndSite({
    "/example.html": `<!doctype html><html lang="en"><head><meta charset="utf-8"><title>Example</title>
        <link rel="icon" href="data:,"></head><body>${example}</body></html>`,
});

test("the README's example shows two readouts and says them aloud", async () => {
    const page = await setup.open("/example.html");
    const spoken = (await page.accessibilityTree()).filter(({ role }) => role === "image").map(({ name }) => name);
    assert.deepEqual(spoken, ["72 degrees Celsius, toasty", "199 degrees Fahrenheit, burning"]);
    const inked = await page.evaluate(() =>
        [...document.querySelectorAll("thermopix-readout")].map((element) => {
            const canvas = element.shadowRoot.querySelector("canvas");
            const { data } = canvas.getContext("2d").getImageData(0, 0, canvas.width, canvas.height);
            return data.some((value, index) => index % 4 === 3 && value > 0);
        }),
    );
    assert.deepEqual(inked, [true, true]);
    assert.deepEqual(page.errors, []);
    assert.deepEqual(
        page.requests.map((address) => new URL(address).pathname),
        ["/example.html", "/thermopix-readout.js"],
    );
});

test("its readout follows when the attribute changes", async () => {
    const { readouts } = await expectations();
    const comfy = { value: 52, unit: "celsius", style: "arcade", pet: "cat", mood: "content", hot: false };
    const { rows } = readouts.find((each) =>
        Object.entries({ ...comfy, letter: false, blinking: false }).every(([name, value]) => each[name] === value),
    );
    const page = await setup.open("/example.html");
    const shown = await page.evaluate(async (columns) => {
        const element = document.querySelector("thermopix-readout");
        element.setAttribute("celsius", "51.6");
        await null;
        return pageTools.rowsOf(element, columns, false);
    }, rows[0].length);
    assert.deepEqual(shown, rows);
});
