"use strict";

const sizeTitles = { compact: "Compact", large: "Large" };
const barTitles = { dark: "Dark", light: "Light" };
const stuntPeriod = 90;
/** Where the page's own buttons lead, in degrees Celsius. */
const stunts = { heat: 94, cool: 36 };
/** The giant readout fills the screen's width but for some cells of air, and is never larger than this per cell. */
const giantAir = 6;
const largestGiantCell = 16;

/** A group of radio buttons; `cases` are rows of identifier, title and picture (or none). */
function fillChoice(fieldset, name, cases, chosen) {
    const options = cases.map(({ id, title, picture = "" }) => {
        const input = make("input", { type: "radio", name, value: id, defaultChecked: id === chosen });
        return make("label", {}, input, make("span", { className: "face" }, picture, title));
    });
    fieldset.append(make("div", { className: "options" }, ...options));
}

function titled(table) {
    return Object.entries(table).map(([id, row]) => ({ id, title: row.title ?? row }));
}

/** The form, and everything on the screen that follows it. */
class LiveReadout {
    #form = find("controls");
    #monitor = new Monitor();
    #landscape = new Landscape(find("landscape"));
    #petPictures = new Map();
    #display = null;
    #spokenMood = null;
    #stunt = null;

    constructor() {
        this.#fillForm();
        this.#form.addEventListener("input", (event) => {
            if (event.target.name === "celsius") {
                this.#endStunt();
            }
            this.#update();
        });
        this.#form.addEventListener("submit", (event) => event.preventDefault());
        for (const id of Object.keys(stunts)) {
            find(id).addEventListener("click", () => this.#startStunt(stunts[id]));
        }
        find("giant").addEventListener("click", () => this.#readouts.forEach((readout) => readout.blink()));
        find("copy").addEventListener("click", () => this.#copySnippet());
        this.#startClock();
        this.#update();
        new ResizeObserver(() => this.#fitGiant()).observe(find("screen"));
    }

    get #readouts() {
        return [find("bar-readout"), find("giant-readout")];
    }

    get #choices() {
        const form = new FormData(this.#form);
        const celsius = this.#form.elements.celsius.valueAsNumber;
        return {
            celsius: form.has("reading") ? celsius : null,
            warmth: celsius,
            pet: rowOf(glyphs.pets, form.get("pet")),
            style: rowOf(glyphs.styles, form.get("style")),
            size: form.get("size"),
            unit: form.get("unit"),
            bar: form.get("bar"),
            pressure: form.get("pressure"),
            letter: form.has("letter"),
            blinking: form.has("blinking"),
        };
    }

    #fillForm() {
        const pets = glyphs.pets.map((pet) => {
            const picture = make("pixel-art");
            this.#petPictures.set(pet, picture);
            return { id: pet.id, title: pet.title, picture };
        });
        const styles = glyphs.styles.map((style) => {
            const sample = lineRows("52°", glyphs.fonts[style.font], style.tracking);
            return { id: style.id, title: style.title, picture: makePicture(sample, style.round ? 4 : 3, style) };
        });
        fillChoice(find("pet-choice"), "pet", pets, "cat");
        fillChoice(find("style-choice"), "style", styles, "arcade");
        fillChoice(find("size-choice"), "size", titled(sizeTitles), "compact");
        fillChoice(find("unit-choice"), "unit", titled(temperatureUnits), "celsius");
        fillChoice(find("bar-choice"), "bar", titled(barTitles), "dark");
        fillChoice(find("pressure-choice"), "pressure", titled(thermalPressures), "nominal");

        this.#fillBands(this.#form.elements.celsius);
    }

    /** The moods' bands, on the slider's track and named below it. */
    #fillBands(slider) {
        const [lowest, highest] = [Number(slider.min), Number(slider.max)];
        const bounds = [lowest, ...glyphs.moodThresholds.map((threshold) => threshold.upperBound), highest];
        const shares = bounds.map((bound) => `${(100 * (bound - lowest)) / (highest - lowest)}%`);
        const stops = glyphs.moods.map((mood, index) => `var(--${mood.id}) ${shares[index]} ${shares[index + 1]}`);
        slider.style.setProperty("--track", `linear-gradient(90deg, ${stops})`);
        glyphs.moods.forEach((mood, index) => {
            const band = make("span", { className: `band ${mood.id}` }, mood.title);
            band.style.flexGrow = bounds[index + 1] - bounds[index];
            find("bands").append(band);
        });
    }

    #update() {
        const choices = this.#choices;
        const { unit, pressure, pet } = choices;
        const display = this.#monitor.display(choices.celsius, unit, pressure);
        this.#display = display;
        const mood = rowOf(glyphs.moods, display.mood);
        const spoken = spokenReadout(display, pet);

        for (const readout of this.#readouts) {
            this.#dress(readout, display, choices);
            readout.toggleAttribute("still", !choices.blinking);
        }
        find("bar-readout").setAttribute("size", choices.size);
        this.#fitGiant();
        find("bar").dataset.bar = choices.bar;
        find("screen").dataset.mood = display.mood;
        find("giant").disabled = !pet.blink;

        find("degrees").value = readoutText(display, true, false).trim();
        find("mood-title").textContent = mood.title;
        find("mood-caption").textContent = mood.caption;
        find("pet-subtitle").textContent = pet.subtitle;
        find("style-subtitle").textContent = choices.style.subtitle;
        this.#form.elements.celsius.setAttribute("aria-valuetext", `${spoken} ${mood.title}.`);
        for (const [each, picture] of this.#petPictures) {
            picture.show(petRows(each, display.mood, false) ?? ["........"], 4, arcade);
        }
        find("snippet").textContent = this.#snippet(choices);
        this.#landscape.show(choices.warmth);
        if (this.#spokenMood !== null && this.#spokenMood !== mood) {
            find("status").textContent = `${mood.title}. ${mood.caption}`;
        }
        this.#spokenMood = mood;
    }

    #dress(readout, display, { pet, style, pressure, letter }) {
        const attributes = {
            value: display.value,
            unit: display.unit,
            mood: display.mood,
            hot: display.isHot,
            pet: pet.id,
            style: style.id,
            pressure,
            letter,
        };
        for (const [name, value] of Object.entries(attributes)) {
            if (value === null) {
                readout.removeAttribute(name);
            } else {
                readout.setAttribute(name, value);
            }
        }
    }

    #snippet({ celsius, pet, style, size, unit, bar, pressure, letter, blinking }) {
        const attributes = [
            celsius === null ? "" : `celsius="${celsius}"`,
            `pet="${pet.id}"`,
            unit === "celsius" ? "" : `unit="${unit}"`,
            style === arcade ? "" : `style="${style.id}"`,
            size === "compact" ? "" : `size="${size}"`,
            pressure === "nominal" ? "" : `pressure="${pressure}"`,
            `appearance="${bar}"`,
            letter ? "letter" : "",
            blinking ? "" : "still",
        ].filter(Boolean);
        const script = '<script src="thermopix-readout.js"></script>';
        return `${script}\n\n<thermopix-readout ${attributes.join(" ")}>\n</thermopix-readout>`;
    }

    async #copySnippet() {
        try {
            await navigator.clipboard.writeText(find("snippet").textContent);
            find("status").textContent = "Copied.";
            find("copy").textContent = "Copied";
        } catch {
            getSelection().selectAllChildren(find("snippet"));
            find("status").textContent = "Selected, ready to copy.";
        }
    }

    #fitGiant() {
        const { pet, style, letter } = this.#choices;
        const columns = readoutRows(this.#display, style, pet, letter, false)[0].length + giantAir;
        const cell = Math.floor(find("screen").clientWidth / columns);
        find("giant-readout").setAttribute("size", Math.min(largestGiantCell, Math.max(2, cell)));
    }

    /** Lets the temperature walk to a goal; without motion it is there at once. */
    #startStunt(goal) {
        this.#endStunt();
        const slider = this.#form.elements.celsius;
        if (reducedMotion.matches) {
            slider.valueAsNumber = goal;
            this.#update();
            return;
        }
        this.#stunt = setInterval(() => {
            const distance = goal - slider.valueAsNumber;
            slider.valueAsNumber += Math.sign(distance) * Math.min(1, Math.abs(distance));
            this.#update();
            if (slider.valueAsNumber === goal) {
                this.#endStunt();
            }
        }, stuntPeriod);
    }

    #endStunt() {
        clearInterval(this.#stunt);
    }

    #startClock() {
        const format = new Intl.DateTimeFormat("en", {
            weekday: "short",
            hour: "2-digit",
            minute: "2-digit",
            hourCycle: "h23",
        });
        const show = () => (find("clock").textContent = format.format(new Date()).replace(",", ""));
        show();
        setInterval(show, 10000);
    }
}

new LiveReadout();
