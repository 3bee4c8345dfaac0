"use strict";

/** By raw value, in the order of pickers. */
const temperatureUnits = {
    celsius: { title: "Celsius", letter: "C", fromCelsius: (celsius) => celsius, toCelsius: (value) => value },
    fahrenheit: {
        title: "Fahrenheit",
        letter: "F",
        fromCelsius: (celsius) => (celsius * 9) / 5 + 32,
        toCelsius: (value) => ((value - 32) * 5) / 9,
    },
};

/** Thermal states of the system by raw value; an elevated one is hot whatever the sensors say. */
const thermalPressures = {
    nominal: { title: "Nominal", isElevated: false },
    fair: { title: "Fair", isElevated: false },
    serious: { title: "Serious", isElevated: true },
    critical: { title: "Critical", isElevated: true },
};

const hotThresholdCelsius = 85;
const coolingMarginCelsius = 3;

/** Halves go away from zero. */
function roundedDegrees(value) {
    return Math.sign(value) * Math.round(Math.abs(value));
}

/**
 * The mood at a temperature. Rises at once; falls only 3 degrees below the bound of the mood last shown (null: none);
 * an elevated pressure is the hottest mood.
 */
function moodAt(celsius, pressure, previous) {
    const moods = glyphs.moods.map((mood) => mood.id);
    if (thermalPressures[pressure].isElevated) {
        return moods.at(-1);
    }
    const candidate = glyphs.moodThresholds.find((threshold) => threshold.upperBound > celsius)?.mood ?? moods.at(-1);
    if (previous === null || moods.indexOf(candidate) >= moods.indexOf(previous)) {
        return candidate;
    }
    const lowerBoundOfPrevious = glyphs.moodThresholds[moods.indexOf(previous) - 1].upperBound;
    return celsius > lowerBoundOfPrevious - coolingMarginCelsius ? previous : candidate;
}

/** Turns temperatures into displays and remembers the mood last shown. */
class Monitor {
    #lastMood = null;

    /** What to show for degrees Celsius, or for no reading (null). */
    display(celsius, unit, pressure) {
        const { isElevated } = thermalPressures[pressure];
        if (celsius === null) {
            this.#lastMood = isElevated ? "scorching" : "content";
            return { value: null, unit, pressure, isHot: isElevated, mood: this.#lastMood };
        }
        this.#lastMood = moodAt(celsius, pressure, this.#lastMood);
        return {
            value: roundedDegrees(temperatureUnits[unit].fromCelsius(celsius)),
            unit,
            pressure,
            isHot: isElevated || celsius >= hotThresholdCelsius,
            mood: this.#lastMood,
        };
    }
}
