import assert from "node:assert/strict";
import { test } from "node:test";

import { startBrowserAndSite } from "./Setup.mjs";

const setup = startBrowserAndSite();

function focused(page) {
    return page.evaluate(() => {
        const element = document.activeElement;
        return element.id || (element.name ? `${element.name}=${element.value}` : element.textContent.trim());
    });
}

async function tabTo(page, wanted) {
    for (let step = 0; step < 60; step++) {
        if ((await focused(page)) === wanted) {
            return;
        }
        await page.press("Tab");
    }
    assert.fail(`Tab never reaches ${wanted}`);
}

test("Tab visits everything in reading order, and the whole page is left in the end", async () => {
    const page = await setup.open("/");
    const visited = [];
    for (let step = 0; step < 60; step++) {
        await page.press("Tab");
        const now = await focused(page);
        if (now === visited[0] || (await page.evaluate(() => document.activeElement === document.body))) {
            break;
        }
        visited.push(now);
    }
    assert.deepEqual(
        visited,
        [
            "Skip to the live readout",
            "Pets",
            "Styles",
            "Gallery",
            "Embed",
            "Get it",
            "giant",
            "celsius",
            "heat",
            "cool",
            "pet=cat",
            "style=arcade",
            "size=compact",
            "unit=celsius",
            "bar=dark",
            "letter=on",
            "blinking=on",
            "reading=on",
            "pressure=nominal",
            "thermopix-readout.js",
            "Markup for the readout above",
            "copy",
            "./dev run",
            "glyphs.json",
        ].map((each) => (each === "Markup for the readout above" ? visited[20] : each)),
    );
    assert.match(visited[20], /^<script src="thermopix-readout.js">/);
});

test("the first Tab shows a link that leads past the header", async () => {
    const page = await setup.open("/");
    await page.press("Tab");
    const top = await page.evaluate(() => document.activeElement.getBoundingClientRect().top);
    assert.ok(top >= 0);
    await page.press("Enter");
    await page.press("Tab");
    assert.equal(await focused(page), "giant");
});

test("what has the focus is outlined", async () => {
    const page = await setup.open("/");
    for (const wanted of ["Pets", "giant", "celsius", "heat", "pet=cat", "size=compact", "letter=on", "copy"]) {
        await tabTo(page, wanted);
        const outline = await page.evaluate(() => {
            const element = document.activeElement;
            const face = element.parentElement.querySelector(":scope > .face");
            const { outlineStyle, outlineWidth } = getComputedStyle(face ?? element);
            return `${outlineStyle} ${outlineWidth}`;
        });
        assert.equal(outline, "solid 3px", wanted);
    }
});

test("arrow keys, Home and End move the temperature by half a degree and to its ends", async () => {
    const page = await setup.open("/");
    await tabTo(page, "celsius");
    const degrees = [];
    for (const key of ["ArrowRight", "ArrowUp", "ArrowLeft", "End", "Home"]) {
        await page.press(key);
        degrees.push(await page.evaluate(() => document.activeElement.value));
    }
    assert.deepEqual(degrees, ["52.5", "53", "52.5", "110", "0"]);
    assert.equal(await page.evaluate(() => document.getElementById("mood-title").textContent), "Cold");
});

test("arrow keys choose among pets and styles, Space flips the switches", async () => {
    const page = await setup.open("/");
    await tabTo(page, "pet=cat");
    await page.press("ArrowRight");
    await tabTo(page, "style=arcade");
    await page.press("ArrowLeft");
    await tabTo(page, "letter=on");
    await page.press(" ");
    await tabTo(page, "blinking=on");
    await page.press(" ");
    const readout = await page.evaluate(() => {
        const attributes = document.getElementById("bar-readout").attributes;
        return Object.fromEntries([...attributes].map(({ name, value }) => [name, value]));
    });
    assert.equal(readout.pet, "westie");
    assert.equal(readout.style, "dotMatrix");
    assert.equal(readout.letter, "true");
    assert.equal(readout.still, "");
});

test("Enter on the giant readout makes the pet blink", async () => {
    const page = await setup.open("/");
    await tabTo(page, "giant");
    const picture = () =>
        page.evaluate(() => document.getElementById("bar-readout").shadowRoot.querySelector("canvas").toDataURL());
    const open = await picture();
    await page.press("Enter");
    assert.notEqual(await picture(), open);
    await page.evaluate(() => manualClock.advance(160));
    assert.equal(await picture(), open);
});

test("the buttons walk the temperature to their ends, and taking the slider stops the walk", async () => {
    const page = await setup.open("/");
    await tabTo(page, "heat");
    await page.press("Enter");
    const celsius = () => page.evaluate(() => document.getElementById("celsius").valueAsNumber);
    await page.evaluate(() => manualClock.advance(900));
    assert.equal(await celsius(), 62);
    await page.evaluate(() => manualClock.advance(60000));
    assert.equal(await celsius(), 94);
    await tabTo(page, "cool");
    await page.press(" ");
    await page.evaluate(() => manualClock.advance(90));
    assert.equal(await celsius(), 93);
    await page.evaluate(() => pageTools.setSlider(70));
    await page.evaluate(() => manualClock.advance(60000));
    assert.equal(await celsius(), 70);
});

test("a screen reader finds names for everything, and the pictures speak", async () => {
    const page = await setup.open("/");
    const tree = await page.accessibilityTree();
    const controls = ["button", "slider", "radio", "checkbox", "link", "image", "group"];
    assert.deepEqual(
        tree.filter(({ role, name }) => controls.includes(role) && name === ""),
        [],
    );
    const names = (role) => tree.filter((node) => node.role === role).map((node) => node.name);
    assert.ok(names("image").includes("52 degrees Celsius, comfy"));
    assert.ok(names("image").includes("Westie, burning"));
    assert.ok(names("image").includes("Temperature unavailable. Thermal state nominal."));
    assert.deepEqual(names("slider"), ["Temperature"]);
    assert.deepEqual(names("heading"), [
        "Your machine has feelings. They are 8\u2009×\u20097 pixels.",
        "Four pets, four moods",
        "Cat",
        "Westie",
        "Mac",
        "Ghost",
        "Sixteen characters are enough",
        "Arcade",
        "Micro",
        "Segment",
        "Dot Matrix",
        "Straight from the program",
        "Put one anywhere",
        "Give yours a face",
    ]);
    assert.ok(["Pet", "Style", "Size", "Unit", "Bar", "Thermal state"].every((name) => names("group").includes(name)));
});
