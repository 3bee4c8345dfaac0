import assert from "node:assert/strict";
import { test } from "node:test";

import { startBrowserAndSite } from "./Setup.mjs";

const setup = startBrowserAndSite();

/** Runs in the page: the pictures of some canvases at chosen moments, as how often each had been seen before. */
function film(milliseconds) {
    const canvases = {
        bar: document.getElementById("bar-readout").shadowRoot.querySelector("canvas"),
        giant: document.getElementById("giant-readout").shadowRoot.querySelector("canvas"),
        landscape: document.querySelector("#landscape canvas"),
    };
    const frames = Object.fromEntries(Object.keys(canvases).map((name) => [name, []]));
    let now = 0;
    for (const moment of [0, ...milliseconds]) {
        manualClock.advance(moment - now);
        now = moment;
        for (const [name, canvas] of Object.entries(canvases)) {
            frames[name].push(canvas.toDataURL());
        }
    }
    return Object.fromEntries(
        Object.entries(frames).map(([name, all]) => [name, all.map((each) => all.indexOf(each))]),
    );
}

test("the pet closes its eyes after 5.5 seconds for 0.16, again and again", async () => {
    const page = await setup.open("/");
    const { bar, giant } = await page.evaluate(film, [5499, 5500, 5659, 5660, 10999, 11000, 11159, 11160]);
    assert.deepEqual(bar, [0, 0, 2, 2, 0, 0, 2, 2, 0]);
    assert.deepEqual(giant, bar);
});

test("a cold pet and a burning one never blink", async () => {
    const page = await setup.open("/");
    for (const celsius of [30, 95]) {
        await page.evaluate((chosen) => pageTools.setSlider(chosen), celsius);
        const { bar } = await page.evaluate(film, [5500, 5600, 5660, 11000]);
        assert.deepEqual(bar, [0, 0, 0, 0, 0], `${celsius} degrees`);
    }
});

test("choosing another pet starts the wait anew", async () => {
    const page = await setup.open("/");
    await page.evaluate(async () => {
        manualClock.advance(5000);
        document.querySelector('[name="pet"][value="mac"]').click();
        await null;
    });
    const { bar } = await page.evaluate(film, [5499, 5500, 5660]);
    assert.deepEqual(bar, [0, 0, 2, 0]);
});

test("a pet told to keep still does not blink", async () => {
    const page = await setup.open("/");
    await page.evaluate(() => document.querySelector('[name="blinking"]').click());
    const { bar } = await page.evaluate(film, [5500, 5600, 11000]);
    assert.deepEqual(bar, [0, 0, 0, 0]);
});

test("snow falls when it is cold, embers rise when it burns, and nothing moves between", async () => {
    const page = await setup.open("/");
    await page.evaluate(() => pageTools.inView(document.getElementById("landscape")));
    for (const [celsius, moves] of [
        [30, true],
        [60, false],
        [90, true],
    ]) {
        await page.evaluate((chosen) => pageTools.setSlider(chosen), celsius);
        const { landscape } = await page.evaluate(film, [300, 600]);
        assert.deepEqual(landscape, moves ? [0, 1, 2] : [0, 0, 0], `${celsius} degrees`);
    }
});

test("a reader who wants no motion gets none: no blink, no snow, no walk, no hop, no glide", async () => {
    const page = await setup.open("/", { motion: "reduce" });
    await page.evaluate(() => pageTools.inView(document.getElementById("landscape")));
    const still = [0, 0, 0, 0];
    assert.deepEqual((await page.evaluate(film, [5500, 5600, 11000])).bar, still);
    await page.evaluate(() => document.getElementById("giant").click());
    assert.deepEqual((await page.evaluate(film, [100, 200, 300])).giant, still);
    for (const [button, goal] of [
        ["cool", 36],
        ["heat", 94],
    ]) {
        const reached = await page.evaluate((id) => {
            document.getElementById(id).click();
            return document.getElementById("celsius").valueAsNumber;
        }, button);
        assert.equal(reached, goal);
        assert.deepEqual((await page.evaluate(film, [300, 600, 900])).landscape, still);
    }
    const styles = await page.evaluate(() => [
        getComputedStyle(document.documentElement).scrollBehavior,
        [...document.getAnimations()].length,
    ]);
    assert.deepEqual(styles, ["auto", 0]);
});

test("the wish for no motion is followed when it comes while the page is open", async () => {
    const page = await setup.open("/");
    await page.evaluate(async () => {
        await pageTools.inView(document.getElementById("landscape"));
        pageTools.setSlider(30);
        const query = matchMedia("(prefers-reduced-motion: reduce)");
        window.motionReduced = new Promise((resolve) => query.addEventListener("change", () => resolve(true)));
    });
    assert.deepEqual((await page.evaluate(film, [300, 600])).landscape, [0, 1, 2]);
    await page.prefer({ scheme: "light", motion: "reduce" });
    await page.evaluate(() => window.motionReduced);
    const { landscape, bar } = await page.evaluate(film, [5500, 5600]);
    assert.deepEqual(landscape, [0, 0, 0]);
    assert.deepEqual(bar, [0, 0, 0]);
});
