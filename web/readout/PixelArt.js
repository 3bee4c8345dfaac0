"use strict";

/** By ink: full, and an unlit cell that still shows faintly. */
const opacities = { "#": 1, ":": 0.12 };

/** Whole device pixels for a length in points, at least one. */
function devicePixels(points) {
    return Math.max(1, Math.round(points * devicePixelRatio));
}

/**
 * A length in CSS for a whole number of device pixels. Engines cut lengths to small fractions of a pixel; the bit that
 * is added keeps the cut from taking a whole pixel away.
 */
function cssLength(pixels) {
    return `${(pixels + 1 / 256) / devicePixelRatio}px`;
}

/** Calls back whenever the number of device pixels in a point has changed. */
function watchDevicePixels(callback) {
    const current = matchMedia(`(resolution: ${devicePixelRatio}dppx)`);
    const changed = () => {
        callback();
        watchDevicePixels(callback);
    };
    current.addEventListener("change", changed, { once: true });
}

/** Samples on each side of a pixel that its coverage is counted from. */
const samples = 8;

/** The part of a pixel, 0 to 1, that a disc in the middle of a cell of `pixels` pixels covers. */
function discCoverage(x, y, pixels, radius) {
    let covered = 0;
    for (let row = 0.5; row < samples; row++) {
        for (let column = 0.5; column < samples; column++) {
            const distance = Math.hypot(x + column / samples - pixels / 2, y + row / samples - pixels / 2);
            covered += distance <= radius ? 1 : 0;
        }
    }
    return covered / samples ** 2;
}

/** One cell: a square without an inset, else a dot whose every pixel is inked as far as the dot covers it. */
function cellStamp(pixels, inset, color) {
    const stamp = new OffscreenCanvas(pixels, pixels);
    const context = stamp.getContext("2d");
    context.fillStyle = color;
    if (inset === 0) {
        context.fillRect(0, 0, pixels, pixels);
        return stamp;
    }
    for (let y = 0; y < pixels; y++) {
        for (let x = 0; x < pixels; x++) {
            context.globalAlpha = discCoverage(x, y, pixels, (0.5 - inset) * pixels);
            context.fillRect(x, y, 1, 1);
        }
    }
    return stamp;
}

/**
 * Fills a canvas with art rows. Each cell takes the same whole number of device pixels; `inset` is the part of a cell
 * left free on every side of a round dot.
 */
function paintRows(canvas, rows, pixels, inset, color) {
    canvas.width = rows[0].length * pixels;
    canvas.height = rows.length * pixels;
    canvas.style.width = cssLength(canvas.width);
    canvas.style.height = cssLength(canvas.height);

    const context = canvas.getContext("2d");
    const stamp = cellStamp(pixels, inset, color);
    rows.forEach((row, y) => {
        [...row].forEach((ink, x) => {
            if (ink in opacities) {
                context.globalAlpha = opacities[ink];
                context.drawImage(stamp, x * pixels, y * pixels);
            }
        });
    });
}

/** An element that shows art rows in the colour of the text around it, sharp on every screen. */
class PixelArt extends HTMLElement {
    static #shown = new Set();
    static {
        watchDevicePixels(() => PixelArt.#shown.forEach((art) => art.#paint()));
    }

    #canvas = document.createElement("canvas");
    #internals = this.attachInternals();
    #picture = null;

    constructor() {
        super();
        const style = document.createElement("style");
        // The transition does not show: its end is how a change of the inherited colour is noticed.
        style.textContent = `
            :host { display: inline-flex; align-items: center; vertical-align: middle; }
            :host([hidden]) { display: none; }
            canvas { display: block; image-rendering: pixelated; transition: color 1ms step-end; }`;
        this.attachShadow({ mode: "open" }).append(style, this.#canvas);
        this.#canvas.addEventListener("transitionend", () => this.#paint());
    }

    connectedCallback() {
        PixelArt.#shown.add(this);
        this.#paint();
    }

    disconnectedCallback() {
        PixelArt.#shown.delete(this);
    }

    /**
     * Shows art rows at a number of points per cell; `style` (a row of `glyphs.styles`) says how cells are drawn.
     * Screen readers say `description`; without one they skip the picture.
     */
    show(rows, cell, style, description) {
        this.#picture = { rows, cell, style };
        this.#internals.role = description ? "img" : "presentation";
        this.#internals.ariaLabel = description || null;
        this.#paint();
    }

    #paint() {
        if (!this.isConnected || !this.#picture) {
            return;
        }
        const { rows, cell, style } = this.#picture;
        const { compact } = style.cells;
        const color = getComputedStyle(this).color;
        paintRows(this.#canvas, rows, devicePixels(cell), compact.dotInset / compact.cell, color);
    }
}
