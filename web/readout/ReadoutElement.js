"use strict";

const blinkPeriod = 5500;
const closedEyes = 160;
const reducedMotion = matchMedia("(prefers-reduced-motion: reduce)");

/**
 * <thermopix-readout celsius="72.4" pet="cat">: the readout as the status bar shows it. Attributes:
 *   celsius                degrees Celsius, any number; gives the number, the mood and whether it is hot
 *   value                  the whole number to show, in `unit`; wins over celsius
 *   unit                   celsius, fahrenheit
 *   style, or pixel-style  arcade, micro, segment, dotMatrix; pixel-style where `style` has to hold CSS
 *   size                   compact, large, or a whole number of points per cell
 *   pet                    cat, westie, mac, ghost, none
 *   mood                   chilly, content, warm, scorching, instead of the temperature's own
 *   hot                    hot, or "false" for not, instead of the temperature's own
 *   letter                 shows the unit letter
 *   pressure               nominal, fair, serious, critical: the system's thermal state
 *   appearance             light, dark: on a piece of status bar; without it the ink has the colour of the text
 *   still                  keeps the pet from blinking
 * What is missing or unknown takes the first case listed; without a reading the digits are dashes.
 */
class ReadoutElement extends PixelArt {
    static observedAttributes = [
        "celsius",
        "value",
        "unit",
        "style",
        "pixel-style",
        "size",
        "pet",
        "mood",
        "hot",
        "letter",
        "pressure",
        "still",
    ];

    #monitor = new Monitor();
    #display = null;
    #isBlinking = false;
    #updateIsDue = false;
    #blinkTimer = null;
    #openTimer = null;

    constructor() {
        super();
        const style = document.createElement("style");
        style.textContent = `
            :host([appearance]) { box-sizing: border-box; min-height: ${glyphs.menuBarThickness}px; padding: 0 8px; }
            :host([appearance="light"]) {
                color: rgb(0 0 0 / 85%); background: linear-gradient(rgb(250 250 252), rgb(232 232 238));
            }
            :host([appearance="dark"]) {
                color: rgb(255 255 255 / 92%); background: linear-gradient(rgb(58 58 64), rgb(38 38 43));
            }`;
        this.shadowRoot.append(style);
    }

    connectedCallback() {
        super.connectedCallback();
        this.#update();
        this.#startBlinking();
    }

    disconnectedCallback() {
        super.disconnectedCallback();
        this.#stopBlinking();
    }

    attributeChangedCallback(name, before, after) {
        if (!this.isConnected || before === after) {
            return;
        }
        if (name === "pet" || name === "still") {
            this.#startBlinking();
        }
        if (!this.#updateIsDue) {
            this.#updateIsDue = true;
            queueMicrotask(() => this.#update());
        }
    }

    /** Closes the pet's eyes for a moment, unless the reader wants no motion. */
    blink() {
        if (reducedMotion.matches) {
            return;
        }
        this.#isBlinking = true;
        this.#draw();
        clearTimeout(this.#openTimer);
        this.#openTimer = setTimeout(() => {
            this.#isBlinking = false;
            this.#draw();
        }, closedEyes);
    }

    #startBlinking() {
        this.#stopBlinking();
        if (this.#pet.blink && !this.hasAttribute("still")) {
            this.#blinkTimer = setInterval(() => this.blink(), blinkPeriod);
        }
    }

    #stopBlinking() {
        clearInterval(this.#blinkTimer);
        clearTimeout(this.#openTimer);
        this.#isBlinking = false;
    }

    #update() {
        this.#updateIsDue = false;
        const unit = this.#keyOf(temperatureUnits, "unit");
        const value = this.#number("value");
        const celsius = value === null ? this.#number("celsius") : temperatureUnits[unit].toCelsius(value);
        const display = this.#monitor.display(celsius, unit, this.#keyOf(thermalPressures, "pressure"));
        if (glyphs.moods.some((mood) => mood.id === this.getAttribute("mood"))) {
            display.mood = this.getAttribute("mood");
        }
        if (this.hasAttribute("hot")) {
            display.isHot = this.#isSet("hot");
        }
        this.#display = display;
        this.#draw();
    }

    #draw() {
        if (!this.#display) {
            return;
        }
        const style = rowOf(glyphs.styles, this.getAttribute("pixel-style") ?? this.getAttribute("style"));
        const rows = readoutRows(this.#display, style, this.#pet, this.#isSet("letter"), this.#isBlinking);
        this.show(rows, this.#cell(style), style, spokenReadout(this.#display, this.#pet));
    }

    get #pet() {
        return rowOf(glyphs.pets, this.getAttribute("pet"));
    }

    #cell(style) {
        const size = this.getAttribute("size");
        if (/^[1-9]\d?$/.test(size)) {
            return Number(size);
        }
        return (style.cells[size] ?? style.cells.compact).cell;
    }

    #keyOf(table, name) {
        const key = this.getAttribute(name);
        return Object.hasOwn(table, key) ? key : Object.keys(table)[0];
    }

    /** Null for a missing attribute and for one that is no number. */
    #number(name) {
        const text = this.getAttribute(name)?.trim();
        return text && Number.isFinite(Number(text)) ? Number(text) : null;
    }

    #isSet(name) {
        return this.hasAttribute(name) && this.getAttribute(name) !== "false";
    }
}

if (!customElements.get("thermopix-readout")) {
    customElements.define("thermopix-readout", ReadoutElement);
}
