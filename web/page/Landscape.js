"use strict";

/** What the world behind the readout looks like at a temperature; between two entries the colours mix. */
const climates = [
    { celsius: 30, high: [34, 54, 110],  low: [126, 170, 214], sun: [236, 243, 255], far: [92, 124, 168], near: [150, 176, 208] },
    { celsius: 52, high: [42, 118, 168], low: [168, 222, 214], sun: [255, 246, 200], far: [66, 148, 128], near: [48, 108, 84] },
    { celsius: 72, high: [106, 58, 122], low: [255, 178, 102], sun: [255, 236, 150], far: [156, 84, 96],  near: [92, 50, 78] },
    { celsius: 92, high: [62, 12, 34],   low: [236, 74, 34],   sun: [255, 206, 84],  far: [120, 26, 36],  near: [46, 10, 24] },
];

const landscapeCell = 4;
const snowBelowCelsius = glyphs.moodThresholds[0].upperBound;
const framePeriod = 140;
const bandCount = 7;

/** Thresholds of an ordered dither, in sixteenths. */
const dither = [
    [0, 8, 2, 10],
    [12, 4, 14, 6],
    [3, 11, 1, 9],
    [15, 7, 13, 5],
];

function climateAt(celsius) {
    const next = climates.findIndex((climate) => climate.celsius >= celsius);
    if (next <= 0) {
        return climates.at(next);
    }
    const [cooler, warmer] = [climates[next - 1], climates[next]];
    const share = (celsius - cooler.celsius) / (warmer.celsius - cooler.celsius);
    const mix = (key) => blend(cooler[key], warmer[key], share);
    return { high: mix("high"), low: mix("low"), sun: mix("sun"), far: mix("far"), near: mix("near") };
}

function blend(from, to, share) {
    return from.map((channel, index) => channel + (to[index] - channel) * share);
}

/** A number from 0 to 1 that looks random and is always the same. */
function scattered(index, series) {
    return Math.abs(Math.sin((index + 1) * 12.9898 + series * 78.233) * 43758.5453) % 1;
}

/** Into a length, from either end. */
function wrapped(value, length) {
    return ((Math.floor(value) % length) + length) % length;
}

/** The sky in dithered bands, a sun that climbs with the temperature, and two rows of hills. */
function scenery(width, height, celsius) {
    const climate = climateAt(celsius);
    const bands = Array.from({ length: bandCount + 1 }, (_, band) =>
        blend(climate.high, climate.low, band / bandCount),
    );
    const warmth = Math.min(1, Math.max(0, (celsius - 20) / 80));
    const sun = { x: width * 0.76, y: height * (0.62 - 0.34 * warmth), radius: 5 + 5 * warmth };
    const farHills = Array.from(
        { length: width },
        (_, x) => height * 0.66 - 5 * Math.sin(x / 11 + 1) - 3 * Math.sin(x / 5.3),
    );
    const nearHills = Array.from({ length: width }, (_, x) => height * 0.82 - 2.2 * Math.sin(x / 17 + 4));

    const colorAt = (x, y) => {
        const isOdd = (x + y) % 2 === 1;
        if (y >= nearHills[x]) {
            return y < nearHills[x] + 2 && !isOdd ? climate.far : climate.near;
        }
        if (y >= farHills[x]) {
            return climate.far;
        }
        const distance = Math.hypot(x + 0.5 - sun.x, y + 0.5 - sun.y);
        if (distance < sun.radius) {
            return climate.sun;
        }
        const depth = (y / height) * 1.25 * bandCount;
        const isDeeper = depth % 1 > (dither[y % 4][x % 4] + 0.5) / 16;
        const sky = bands[Math.min(bandCount, Math.floor(depth) + (isDeeper ? 1 : 0))];
        return distance < sun.radius + 3 && !isOdd ? blend(sky, climate.sun, 0.5) : sky;
    };

    const image = new ImageData(width, height);
    for (let y = 0; y < height; y++) {
        for (let x = 0; x < width; x++) {
            const [red, green, blue] = colorAt(x, y);
            const at = (y * width + x) * 4;
            image.data[at] = red;
            image.data[at + 1] = green;
            image.data[at + 2] = blue;
            image.data[at + 3] = 255;
        }
    }
    return image;
}

/** A pixel landscape that fills its box: sky, sun, hills; snow when it is cold, embers when it burns. */
class Landscape {
    #box;
    #canvas = document.createElement("canvas");
    #celsius = 52;
    #background = null;
    #frame = 0;
    #isVisible = false;
    #timer = null;

    constructor(box) {
        this.#box = box;
        box.append(this.#canvas);
        new ResizeObserver(() => this.#draw()).observe(box);
        new IntersectionObserver(([entry]) => {
            this.#isVisible = entry.isIntersecting;
            this.#animate();
        }).observe(box);
        watchDevicePixels(() => this.#draw());
        reducedMotion.addEventListener("change", () => this.#animate());
    }

    show(celsius) {
        this.#celsius = celsius;
        this.#draw();
        this.#animate();
    }

    get #particles() {
        if (this.#celsius < snowBelowCelsius) {
            return { count: 70, color: "rgb(255 255 255)", fall: 1, drift: 0.25 };
        }
        if (this.#celsius >= hotThresholdCelsius) {
            return { count: 46, color: "rgb(255 190 70)", fall: -1.5, drift: 0.4 };
        }
        return null;
    }

    #animate() {
        const moves = this.#isVisible && this.#particles && !reducedMotion.matches;
        if (!moves) {
            clearInterval(this.#timer);
            this.#timer = null;
        } else if (this.#timer === null) {
            this.#timer = setInterval(() => {
                this.#frame += 1;
                this.#drawFrame();
            }, framePeriod);
        }
    }

    /** Paints everything that stands still anew, then one frame. */
    #draw() {
        const pixels = devicePixels(landscapeCell);
        const width = Math.ceil((this.#box.clientWidth * devicePixelRatio) / pixels);
        const height = Math.ceil((this.#box.clientHeight * devicePixelRatio) / pixels);
        if (width === 0 || height === 0) {
            return;
        }
        this.#canvas.width = width;
        this.#canvas.height = height;
        this.#canvas.style.width = cssLength(width * pixels);
        this.#canvas.style.height = cssLength(height * pixels);
        this.#background = scenery(width, height, this.#celsius);
        this.#drawFrame();
    }

    #drawFrame() {
        const { width, height } = this.#canvas;
        const context = this.#canvas.getContext("2d");
        context.putImageData(this.#background, 0, 0);
        const particles = this.#particles;
        if (!particles) {
            return;
        }
        context.fillStyle = particles.color;
        for (let index = 0; index < particles.count; index++) {
            const speed = 0.6 + scattered(index, 0);
            const x = width * scattered(index, 1) + this.#frame * particles.drift * speed;
            const y = height * scattered(index, 2) + this.#frame * particles.fall * speed;
            context.fillRect(wrapped(x, width), wrapped(y, height), 1, 1);
        }
    }
}
