import assert from "node:assert/strict";
import { test } from "node:test";

import { startBrowserAndSite } from "./Setup.mjs";

const setup = startBrowserAndSite();

for (const width of [320, 390, 600, 768, 1024, 1280, 1920]) {
    test(`nothing sticks out of a page that is ${width} wide`, async () => {
        const page = await setup.open("/", { width });
        const wide = await page.evaluate(async () => {
            for (const value of ["fahrenheit", "large"]) {
                document.querySelector(`#controls [value="${value}"]`).click();
            }
            document.querySelector('[name="letter"]').click();
            pageTools.setSlider(110);
            await new Promise(requestAnimationFrame);
            const sticksOut = (element) => {
                const { left, right } = element.getBoundingClientRect();
                return right > innerWidth + 0.5 || left < -0.5;
            };
            const elements = [...document.querySelectorAll("main *, header *, footer *")];
            const outside = elements.filter((element) => sticksOut(element) && !element.closest(".landscape, .bands"));
            return {
                scrolls: document.documentElement.scrollWidth > innerWidth,
                outside: outside.map((element) => `${element.localName}#${element.id}.${element.className}`),
                barHeight: document.getElementById("bar").getBoundingClientRect().height,
                cutOff:
                    document.getElementById("bar-readout").getBoundingClientRect().right >
                    document.getElementById("bar").getBoundingClientRect().right,
            };
        });
        assert.deepEqual(wide, { scrolls: false, outside: [], barHeight: 22, cutOff: false });
    });
}

for (const scheme of ["light", "dark"]) {
    test(`text stands out clearly from what is behind it, ${scheme}`, async () => {
        const page = await setup.open("/", { scheme });
        const faint = await page.evaluate(() => {
            const channels = (color) => color.match(/[\d.]+/g).map(Number);
            const luminance = (color) => {
                const [red, green, blue] = channels(color).map((channel) => {
                    const share = channel / 255;
                    return share <= 0.04045 ? share / 12.92 : ((share + 0.055) / 1.055) ** 2.4;
                });
                return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
            };
            const groundOf = (element) => {
                for (let each = element; each; each = each.parentElement) {
                    const { backgroundColor } = getComputedStyle(each);
                    if ((channels(backgroundColor)[3] ?? 1) === 1) {
                        return backgroundColor;
                    }
                }
                return "rgb(255, 255, 255)";
            };
            const ratio = (element) => {
                const levels = [getComputedStyle(element).color, groundOf(element)]
                    .map(luminance)
                    .sort((a, b) => b - a);
                return (levels[0] + 0.05) / (levels[1] + 0.05);
            };
            const hasText = (element) =>
                [...element.childNodes].some((node) => node.nodeType === 3 && node.data.trim());
            return [...document.querySelectorAll("body *")]
                .filter((element) => hasText(element) && !element.closest(".bar, script, noscript"))
                .map((element) => [element.textContent.trim().slice(0, 30), ratio(element)])
                .filter(([, contrast]) => contrast < 4.5);
        });
        assert.deepEqual(faint, []);
    });

    test(`the page's ground follows the reader's scheme, ${scheme}`, async () => {
        const page = await setup.open("/", { scheme });
        const ground = await page.evaluate(() => getComputedStyle(document.body).backgroundColor);
        assert.equal(ground, scheme === "light" ? "rgb(244, 239, 230)" : "rgb(21, 19, 28)");
    });
}

test("the art changes its ink when the scheme changes while the page is open", async () => {
    const page = await setup.open("/");
    const inkOf = () => {
        const canvas = document.querySelector("#brand-mark pixel-art").shadowRoot.querySelector("canvas");
        const { data } = canvas.getContext("2d").getImageData(0, 0, canvas.width, canvas.height);
        const opaque = data.findIndex((value, index) => index % 4 === 3 && value === 255);
        return [...data.slice(opaque - 3, opaque)];
    };
    assert.deepEqual(await page.evaluate(inkOf), [179, 57, 28]);
    await page.evaluate(() => {
        const canvas = document.querySelector("#brand-mark pixel-art").shadowRoot.querySelector("canvas");
        window.repainted = new Promise((resolve) => canvas.addEventListener("transitionend", resolve));
    });
    await page.prefer({ scheme: "dark", motion: "no-preference" });
    await page.evaluate(() => window.repainted.then(() => null));
    assert.deepEqual(await page.evaluate(inkOf), [255, 138, 92]);
});

test("exported pictures are enlarged by whole pixels, all of a shelf alike", async () => {
    for (const width of [390, 768, 1280]) {
        const page = await setup.open("/", { width, scale: 2 });
        const factors = await page.evaluate(async () => {
            await Promise.all([...document.images].map((image) => image.decode()));
            await new Promise(requestAnimationFrame);
            return ["style-pictures", "pet-pictures"].map((id) => {
                const images = [...document.querySelectorAll(`#${id} img`)];
                const factor = (image) => (image.getBoundingClientRect().width * devicePixelRatio) / image.naturalWidth;
                return [...new Set(images.map((image) => Math.round(factor(image) * 1000) / 1000))];
            });
        });
        for (const shelf of factors) {
            assert.equal(shelf.length, 1);
            assert.ok(Number.isInteger(shelf[0]) && shelf[0] >= 1, `${shelf} at ${width}`);
        }
    }
});
