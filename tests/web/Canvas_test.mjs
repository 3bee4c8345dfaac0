import assert from "node:assert/strict";
import { test } from "node:test";

import { startBrowserAndSite } from "./Setup.mjs";
import { expectations } from "./Site.mjs";

const expected = await expectations();
const host = `<!doctype html><meta charset="utf-8"><script src="/thermopix-readout.js"></script>
<body style="margin: 0; background: white; color: black"><thermopix-readout size="4"></thermopix-readout>`;
const setup = startBrowserAndSite({ "/host.html": host, "/expectations": JSON.stringify(expected) });

test("the canvas shows the rasterizer's rows for every style, pet, mood, unit, value, letter, heat and blink", async () => {
    const page = await setup.open("/host.html");
    const { compared, wrong } = await page.evaluate(async () => {
        const { readouts } = await (await fetch("/expectations")).json();
        const element = document.querySelector("thermopix-readout");
        const wrong = [];
        for (const { rows, description, blinking, ...attributes } of readouts) {
            for (const [name, value] of Object.entries(attributes)) {
                if (value === null) {
                    element.removeAttribute(name);
                } else {
                    element.setAttribute(name, value);
                }
            }
            await null;
            if (blinking) {
                element.blink();
            }
            const shown = pageTools.rowsOf(element, rows[0].length, attributes.style === "dotMatrix");
            manualClock.advance(160);
            if (shown.join() !== rows.join()) {
                wrong.push({ ...attributes, blinking, shown, rows });
            }
        }
        return { compared: readouts.length, wrong: wrong.slice(0, 3) };
    });
    assert.equal(compared, 5 * 2 * 4 * 2 * 4 * 5 * 2 * 2);
    assert.deepEqual(wrong, []);
});

test("a dot covers its pixels as the program's dots do", async () => {
    const page = await setup.open("/host.html");
    const shown = await page.evaluate(async (pixels) => {
        const element = document.querySelector("thermopix-readout");
        element.setAttribute("style", "dotMatrix");
        element.setAttribute("size", pixels);
        await null;
        const context = element.shadowRoot.querySelector("canvas").getContext("2d");
        return [...context.getImageData(0, 0, pixels, pixels).data].filter((_, index) => index % 4 === 3);
    }, expected.dot.pixels);
    const worst = Math.max(...shown.map((alpha, index) => Math.abs(alpha - expected.dot.alphas[index])));
    assert.ok(worst <= 6, `a pixel's coverage is off by ${worst} of 255`);
});

// What reaches the screen, after the browser has placed the canvas somewhere between two pixels.
for (const scale of [1, 1.25, 1.5, 2, 2.625, 3]) {
    test(`every cell covers whole pixels of a screen with ${scale} pixels per point`, async () => {
        const page = await setup.open("/host.html", { scale, width: 400, height: 200 });
        const picture = async (size) => {
            await page.evaluate(async (chosen) => {
                document.body.style.padding = "7.3px 0 0 11.7px";
                const element = document.querySelector("thermopix-readout");
                element.setAttribute("value", 52);
                element.setAttribute("size", chosen);
                await new Promise(requestAnimationFrame);
            }, size);
            return (await page.screenshot()).toString("base64");
        };
        const { rows } = expected.readouts.find(
            ({ value, unit, style, pet, mood, letter, hot, blinking }) =>
                value === 52 &&
                unit === "celsius" &&
                style === "arcade" &&
                pet === "cat" &&
                mood === "content" &&
                !letter &&
                !hot &&
                !blinking,
        );
        for (const [size, points] of [
            ["compact", 2],
            ["large", 3],
        ]) {
            const shown = await page.evaluate(
                readScreen,
                await picture(size),
                Math.round(points * scale),
                rows[0].length,
            );
            assert.deepEqual(shown, rows, `${size} at ${scale}`);
        }
    });
}

/** Runs in the page: the rows of the black art in a screenshot, found by its left top corner. */
async function readScreen(png, pixels, columns) {
    const bytes = Uint8Array.from(atob(png), (character) => character.charCodeAt(0));
    const bitmap = await createImageBitmap(new Blob([bytes], { type: "image/png" }));
    const canvas = new OffscreenCanvas(bitmap.width, bitmap.height);
    const context = canvas.getContext("2d");
    context.drawImage(bitmap, 0, 0);
    const { data, width, height } = context.getImageData(0, 0, bitmap.width, bitmap.height);
    const levelAt = (x, y) => data[(y * width + x) * 4];
    let [left, top] = [width, height];
    for (let y = 0; y < height; y++) {
        for (let x = 0; x < width; x++) {
            if (levelAt(x, y) < 255) {
                left = Math.min(left, x);
                top = Math.min(top, y);
            }
        }
    }
    const inkAt = (column, row) => {
        const levels = new Set();
        for (let y = 0; y < pixels; y++) {
            for (let x = 0; x < pixels; x++) {
                levels.add(levelAt(left + column * pixels + x, top + row * pixels + y));
            }
        }
        return levels.size > 1 ? "?" : levels.has(0) ? "#" : levels.has(255) ? "." : "?";
    };
    return Array.from({ length: 7 }, (_, y) => Array.from({ length: columns }, (__, x) => inkAt(x, y)).join(""));
}
