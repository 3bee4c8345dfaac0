import assert from "node:assert/strict";
import { test } from "node:test";

import { startBrowserAndSite } from "./Setup.mjs";
import { expectations } from "./Site.mjs";

const { readouts } = await expectations();

// A page that somebody else wrote: another encoding, names of its own, rough styles, the script twice.
const foreign = `<!doctype html><html lang="en"><head><meta charset="iso-8859-1"><title>Foreign</title><link rel="icon" href="data:,">
<style>* { box-sizing: content-box; color: rgb(0, 128, 0); } canvas { width: 5px !important; filter: blur(4px); }</style>
<script>const glyphs = "mine"; class Monitor {} function rowOf() {}</script>
<script src="/thermopix-readout.js"></script><script src="/thermopix-readout.js"></script></head>
<body><p><thermopix-readout id="one" celsius="52.4"></thermopix-readout></p></body></html>`;

const setup = startBrowserAndSite({ "/foreign.html": foreign });

function expected(wanted) {
    const defaults = {
        unit: "celsius",
        style: "arcade",
        pet: "cat",
        mood: "content",
        hot: false,
        letter: false,
        blinking: false,
    };
    const all = Object.entries({ ...defaults, ...wanted });
    return readouts.find((readout) => all.every(([name, value]) => readout[name] === value)).rows;
}

/** Sets attributes (null removes) and reads the rows that the element then shows. */
async function dressed(page, attributes, columns, isRound = false) {
    return page.evaluate(
        async (names, count, round) => {
            const element = document.getElementById("one");
            for (const [name, value] of Object.entries({ size: 4, ...names })) {
                if (value === null) {
                    element.removeAttribute(name);
                } else {
                    element.setAttribute(name, value);
                }
            }
            element.parentElement.style.color = "black";
            element.style.setProperty("--keep", "1");
            await null;
            return pageTools.rowsOf(element, count, round);
        },
        attributes,
        columns,
        isRound,
    );
}

test("one script tag puts a readout into somebody else's page and leaves the page's own names alone", async () => {
    const page = await setup.open("/foreign.html");
    const found = await page.evaluate(() => ({
        glyphs,
        monitor: String(Monitor),
        leaked: ["ReadoutElement", "PixelArt", "readoutRows", "blinkPeriod"].filter((name) => {
            try {
                return eval(`typeof ${name}`) !== "undefined";
            } catch {
                return true;
            }
        }),
    }));
    assert.deepEqual(found, { glyphs: "mine", monitor: "class Monitor {}", leaked: [] });
    assert.deepEqual(await dressed(page, {}, 27), expected({ value: 52 }));
    assert.deepEqual(page.errors, []);
    const [document_, ...others] = page.requests;
    assert.ok(document_.endsWith("/foreign.html"));
    assert.deepEqual([...new Set(others.filter((url) => url !== "data:,"))], [`${setup.address}thermopix-readout.js`]);
});

test("the page's styles do not reach the canvas, its colour does", async () => {
    const page = await setup.open("/foreign.html");
    const { width, ink } = await page.evaluate(() => {
        const canvas = document.getElementById("one").shadowRoot.querySelector("canvas");
        return {
            width: canvas.getBoundingClientRect().width,
            ink: [...canvas.getContext("2d").getImageData(0, 0, 1, 1).data],
        };
    });
    assert.ok(Math.abs(width - 54) < 0.1);
    assert.deepEqual(ink, [0, 128, 0, 255]);
});

test("every attribute does what it says", async () => {
    const page = await setup.open("/foreign.html");
    const nothing = {
        celsius: null,
        value: null,
        unit: null,
        style: null,
        "pixel-style": null,
        pet: null,
        mood: null,
        hot: null,
        letter: null,
    };
    const shows = async (attributes, wanted, isRound) => {
        const rows = expected(wanted);
        assert.deepEqual(
            await dressed(page, { ...nothing, ...attributes }, rows[0].length, isRound),
            rows,
            JSON.stringify(attributes),
        );
    };
    await shows({ celsius: 52 }, { value: 52 });
    await shows({ celsius: 51.5 }, { value: 52 });
    await shows({ celsius: 11.1, unit: "fahrenheit" }, { value: 52, unit: "fahrenheit", mood: "chilly" });
    await shows({ value: 52 }, { value: 52 });
    await shows({ value: 52, celsius: 99 }, { value: 52 });
    await shows({ celsius: 52, mood: "scorching" }, { value: 52, mood: "scorching" });
    await shows({ celsius: 52, hot: "", pet: "none" }, { value: 52, hot: true, pet: "none" });
    await shows(
        { celsius: 100, hot: "false", pet: "none" },
        { value: 100, hot: false, pet: "none", mood: "scorching" },
    );
    await shows({ celsius: 52, letter: "" }, { value: 52, letter: true });
    await shows({ celsius: 52, letter: "false" }, { value: 52 });
    await shows({ celsius: 52, pet: "ghost" }, { value: 52, pet: "ghost" });
    await shows({ celsius: 52, "pixel-style": "segment" }, { value: 52, style: "segment" });
    await shows({ celsius: 52, style: "dotMatrix" }, { value: 52, style: "dotMatrix" }, true);
    await shows({ celsius: -12 }, { value: -12, mood: "chilly" });
});

test("what is missing or unknown takes its default, and no reading gives dashes", async () => {
    const page = await setup.open("/foreign.html");
    const odd = { unit: "kelvin", style: "baroque", pet: "dragon", mood: "bored", pressure: "awful" };
    assert.deepEqual(await dressed(page, { ...odd, celsius: 52 }, 27), expected({ value: 52 }));
    for (const celsius of [null, "", "warm", "NaN", "Infinity"]) {
        assert.deepEqual(await dressed(page, { celsius }, 27), expected({ value: null }), String(celsius));
    }
});

test("size takes compact, large or whole points per cell; anything else is compact", async () => {
    const page = await setup.open("/foreign.html");
    const widths = await page.evaluate(async () => {
        const element = document.getElementById("one");
        const measured = [];
        for (const size of ["compact", "large", "1", "12", "0", "-3", "1.5", "huge"]) {
            element.setAttribute("size", size);
            await null;
            measured.push(element.shadowRoot.querySelector("canvas").width / 27);
        }
        return measured;
    });
    assert.deepEqual(widths, [2, 3, 1, 12, 2, 2, 2, 2]);
});

test("the mood falls three degrees late as celsius changes", async () => {
    const page = await setup.open("/foreign.html");
    const moods = [];
    for (const celsius of [66, 63, 62.5, 62, 85, 82.5, 82]) {
        await dressed(page, { celsius }, 27);
        const tree = await page.accessibilityTree();
        moods.push(tree.find(({ role }) => role === "image").name.replace(/.*, /, ""));
    }
    assert.deepEqual(moods, ["toasty", "toasty", "toasty", "comfy", "burning", "burning", "toasty"]);
});

test("it speaks as one picture, and an author's own words win", async () => {
    const page = await setup.open("/foreign.html");
    const spoken = async (attributes) => {
        await dressed(page, attributes, 27);
        const tree = await page.accessibilityTree();
        return tree.filter(({ role }) => role === "image" || role === "Canvas").map(({ name }) => name);
    };
    assert.deepEqual(await spoken({}), ["52 degrees Celsius, comfy"]);
    assert.deepEqual(await spoken({ celsius: 91, pet: "none" }), ["91 degrees Celsius, running hot"]);
    assert.deepEqual(await spoken({ celsius: null, pressure: "serious" }), [
        "Temperature unavailable. Thermal state serious.",
    ]);
    assert.deepEqual(await spoken({ "aria-label": "The attic" }), ["The attic"]);
});

test("appearance puts it on a piece of status bar, 22 points high", async () => {
    const page = await setup.open("/foreign.html");
    for (const appearance of ["light", "dark"]) {
        const box = await page.evaluate(async (chosen) => {
            const element = document.createElement("thermopix-readout");
            element.setAttribute("appearance", chosen);
            document.body.append(element);
            await null;
            const { height, width } = element.getBoundingClientRect();
            return { height, width: Math.round(width), ground: getComputedStyle(element).backgroundImage };
        }, appearance);
        assert.equal(box.height, 22);
        assert.equal(box.width, 27 * 2 + 16);
        assert.match(box.ground, appearance === "light" ? /rgb\(250, 250, 252\)/ : /rgb\(58, 58, 64\)/);
    }
});

test("it follows a screen that changes its pixels per point", async () => {
    const page = await setup.open("/foreign.html");
    const width = () => page.evaluate(() => document.getElementById("one").shadowRoot.querySelector("canvas").width);
    assert.equal(await width(), 54);
    for (const [scale, pixels] of [
        [2, 108],
        [3, 162],
        [1, 54],
    ]) {
        // The browser tells pages only when the emulated screen changes its size as well.
        await page.resize({ width: 800 + scale, height: 600, scale });
        await page.evaluate(
            () => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(() => done()))),
        );
        assert.equal(await width(), pixels);
    }
});

test("it can be made, moved and taken away, and stops its timers", async () => {
    const page = await setup.open("/foreign.html");
    const widths = await page.evaluate(async () => {
        const element = document.createElement("thermopix-readout");
        element.setAttribute("celsius", 20);
        document.body.append(element);
        document.body.prepend(element);
        element.remove();
        manualClock.advance(20000);
        element.setAttribute("celsius", 100);
        document.body.append(element);
        await null;
        return element.shadowRoot.querySelector("canvas").width;
    });
    assert.equal(widths, (8 + 2 + 23) * 2);
    assert.deepEqual(page.errors, []);
});
