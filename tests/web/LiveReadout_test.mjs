import assert from "node:assert/strict";
import { test } from "node:test";

import { startBrowserAndSite } from "./Setup.mjs";
import { expectations } from "./Site.mjs";

const { journeys, readouts } = await expectations();
const setup = startBrowserAndSite({ "/journeys": JSON.stringify(journeys) });

/** Runs in the page: where the live readout differs from a journey through the temperatures. */
async function travel(pressure) {
    document.querySelector(`[name="pressure"][value="${pressure}"]`).click();
    const stages = (await (await fetch("/journeys")).json())[pressure];
    const [bar, giant] = ["bar-readout", "giant-readout"].map((id) => document.getElementById(id));
    const text = (id) => document.getElementById(id).textContent;
    const wrong = [];
    const compare = (stage, what, shown, expected) => {
        if (String(shown) !== String(expected)) {
            wrong.push({ celsius: stage.celsius, what, shown, expected });
        }
    };
    for (const stage of stages) {
        pageTools.setSlider(stage.celsius);
        await null;
        compare(stage, "mood", text("mood-title"), stage.mood);
        compare(stage, "caption", text("mood-caption"), stage.caption);
        compare(stage, "degrees", text("degrees"), `${stage.value}°C`);
        compare(stage, "bar", pageTools.rowsOf(bar, stage.rows[0].length), stage.rows);
        compare(stage, "giant", pageTools.rowsOf(giant, stage.rows[0].length), stage.rows);
        const spoken = document.getElementById("celsius").getAttribute("aria-valuetext");
        compare(stage, "spoken", spoken.startsWith(stage.description), true);
    }
    return { compared: stages.length, wrong: wrong.slice(0, 5) };
}

for (const pressure of Object.keys(journeys)) {
    test(`moods rise at their thresholds and fall three degrees late, thermal state ${pressure}`, async () => {
        const page = await setup.open("/", { width: 390 });
        // The journey starts cold: what the page has shown before would hold the mood up.
        await page.evaluate(() => pageTools.setSlider(0));
        const { compared, wrong } = await page.evaluate(travel, pressure);
        assert.ok(compared > 400);
        assert.deepEqual(wrong, []);
    });
}

test("without a pet the readout catches fire at 85 degrees, not at 84.5", async () => {
    const page = await setup.open("/");
    const shown = await page.evaluate(async () => {
        document.querySelector('[name="pet"][value="none"]').click();
        const rows = [];
        for (const celsius of [84.5, 85]) {
            pageTools.setSlider(celsius);
            await null;
            rows.push(pageTools.rowsOf(document.getElementById("bar-readout"), celsius === 85 ? 23 : 17));
        }
        return rows;
    });
    const stage = (celsius) => journeys.nominal.find((each) => each.celsius === celsius).rowsWithoutPet;
    assert.deepEqual(shown, [stage(84.5), stage(85)]);
});

test("Fahrenheit shows the same temperatures, rounded in Fahrenheit", async () => {
    const page = await setup.open("/");
    const stages = journeys.nominal.slice(0, 221);
    const shown = await page.evaluate(
        (temperatures) => {
            document.querySelector('[name="unit"][value="fahrenheit"]').click();
            return temperatures.map((celsius) => {
                pageTools.setSlider(celsius);
                return document.getElementById("degrees").textContent;
            });
        },
        stages.map((stage) => stage.celsius),
    );
    assert.deepEqual(
        shown,
        stages.map((stage) => `${stage.fahrenheit}°F`),
    );
});

test("every choice of pet, style, unit and letter reaches the bar and the giant readout", async () => {
    const page = await setup.open("/");
    const wanted = readouts.filter(
        ({ value, mood, hot, blinking, unit }) =>
            value === (unit === "celsius" ? 7 : 52) && mood === "chilly" && !hot && !blinking,
    );
    const wrong = await page.evaluate(async (cases) => {
        const differing = [];
        for (const { unit, style, pet, letter, rows } of cases) {
            for (const [name, value] of Object.entries({ unit, style, pet })) {
                document.querySelector(`[name="${name}"][value="${value}"]`).click();
            }
            const box = document.querySelector('[name="letter"]');
            if (box.checked !== letter) {
                box.click();
            }
            pageTools.setSlider(unit === "celsius" ? 7 : 11);
            await null;
            const giant = pageTools.rowsOf(
                document.getElementById("giant-readout"),
                rows[0].length,
                style === "dotMatrix",
            );
            const bar = document.getElementById("bar-readout").shadowRoot.querySelector("canvas");
            if (giant.join() !== rows.join() || bar.width !== rows[0].length * 2) {
                differing.push({ unit, style, pet, letter, giant, rows });
            }
        }
        return differing.slice(0, 3);
    }, wanted);
    assert.equal(wanted.length, 2 * 4 * 5 * 2);
    assert.deepEqual(wrong, []);
});

test("large takes three points a cell, compact two", async () => {
    const page = await setup.open("/");
    const widths = await page.evaluate(async () => {
        const canvas = document.getElementById("bar-readout").shadowRoot.querySelector("canvas");
        const compact = canvas.width;
        document.querySelector('[name="size"][value="large"]').click();
        await null;
        return [compact, canvas.width];
    });
    assert.deepEqual(widths, [27 * 2, 27 * 3]);
});

test("the ink is light on a dark bar and dark on a light one", async () => {
    const page = await setup.open("/");
    const inks = await page.evaluate(async () => {
        const canvas = document.getElementById("bar-readout").shadowRoot.querySelector("canvas");
        const ink = () => [...canvas.getContext("2d").getImageData(0, 0, 1, 1).data];
        const dark = ink();
        const repainted = new Promise((resolve) => canvas.addEventListener("transitionend", resolve));
        document.querySelector('[name="bar"][value="light"]').click();
        await repainted;
        return { dark, light: ink() };
    });
    assert.deepEqual(inks, { dark: [255, 255, 255, 235], light: [0, 0, 0, 217] });
});

test("a sensor that cannot be read gives dashes, and the mood of the thermal state", async () => {
    const page = await setup.open("/");
    const shown = await page.evaluate(async () => {
        document.querySelector('[name="reading"]').click();
        const states = {};
        for (const pressure of ["nominal", "fair", "serious", "critical"]) {
            document.querySelector(`[name="pressure"][value="${pressure}"]`).click();
            await null;
            const rows = pageTools.rowsOf(document.getElementById("bar-readout"), 27);
            states[pressure] = [
                document.getElementById("degrees").textContent,
                document.getElementById("mood-title").textContent,
                rows.join("\n"),
            ];
        }
        return states;
    });
    const dashed = (mood) =>
        readouts
            .find(
                (each) =>
                    each.value === null &&
                    each.unit === "celsius" &&
                    each.style === "arcade" &&
                    each.pet === "cat" &&
                    each.mood === mood &&
                    !each.letter &&
                    !each.hot &&
                    !each.blinking,
            )
            .rows.join("\n");
    const calm = ["--°C", "Comfy", dashed("content")];
    const burning = ["--°C", "Burning", dashed("scorching")];
    assert.deepEqual(shown, { nominal: calm, fair: calm, serious: burning, critical: burning });
});

test("a new mood is announced, a new number alone is not", async () => {
    const page = await setup.open("/");
    const said = await page.evaluate(() =>
        [53, 60, 66, 67, 90].map((celsius) => {
            document.getElementById("status").textContent = "";
            pageTools.setSlider(celsius);
            return document.getElementById("status").textContent;
        }),
    );
    assert.deepEqual(said, [
        "",
        "",
        "Toasty. Getting a bit toasty.",
        "",
        "Burning. Everything is fine. Everything is FINE.",
    ]);
});

test("the snippet is the markup of what is shown", async () => {
    const page = await setup.open("/");
    const [shown, embedded] = await page.evaluate(async () => {
        for (const value of ["ghost", "segment", "fahrenheit", "serious"]) {
            document.querySelector(`#controls [value="${value}"]`).click();
        }
        document.querySelector('[name="letter"]').click();
        pageTools.setSlider(71.5);
        await null;
        const holder = document.createElement("div");
        holder.innerHTML = document.getElementById("snippet").textContent;
        document.body.append(holder);
        await null;
        const rows = (art) => pageTools.rowsOf(art, 34);
        const copy = holder.querySelector("thermopix-readout");
        copy.setAttribute("size", 4);
        copy.removeAttribute("appearance");
        copy.setAttribute("pixel-style", "segment");
        copy.style.color = "black";
        await null;
        return [rows(document.getElementById("giant-readout")), rows(copy)];
    });
    assert.ok(shown.join("").includes(":"));
    assert.deepEqual(embedded, shown);
});
