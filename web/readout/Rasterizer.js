"use strict";

/** The other moods keep their eyes as they are. */
const blinkingMoods = ["content", "warm"];

/** The row of a table with this identifier; the table's first row, which is the default, for any other. */
function rowOf(table, id) {
    return table.find((row) => row.id === id) ?? table[0];
}

/** The characters to draw: the digit field, a flame when hot and wanted, the degree sign, the unit letter. */
function readoutText(display, showsUnitLetter, includesFlame) {
    const slots = glyphs.slots[display.unit];
    const digits = display.value === null ? "-".repeat(slots) : String(display.value);
    const flame = display.isHot && includesFlame ? "~" : "";
    const letter = showsUnitLetter ? temperatureUnits[display.unit].letter : "";
    return `${digits.padStart(slots)}${flame}°${letter}`;
}

/** One line of glyphs as art rows; a character that the font lacks leaves a blank slot. */
function lineRows(text, font, tracking) {
    const gap = ".".repeat(tracking);
    const line = [...text].map((character) => font.glyphs[character] ?? font.glyphs[" "]);
    return Array.from({ length: font.height }, (_, y) => line.map((glyph) => glyph[y]).join(gap));
}

/** The pet's art rows; null for a pet without art. */
function petRows(pet, mood, isBlinking) {
    const closesEyes = isBlinking && blinkingMoods.includes(mood);
    return (closesEyes ? pet.blink : pet.moods[mood]) ?? null;
}

/** Blank rows above and below; an odd one goes below. */
function centredRows(rows, height) {
    const blank = ".".repeat(rows[0].length);
    const above = Math.floor((height - rows.length) / 2);
    return Array.from({ length: height }, (_, y) => rows[y - above] ?? blank);
}

/** The whole readout as art rows: the pet, if any, on the left; without a pet a hot display has a flame. */
function readoutRows(display, style, pet, showsUnitLetter, isBlinking) {
    const face = petRows(pet, display.mood, isBlinking);
    const line = lineRows(readoutText(display, showsUnitLetter, !face), glyphs.fonts[style.font], style.tracking);
    if (!face) {
        return line;
    }
    const height = Math.max(line.length, face.length);
    const textRows = centredRows(line, height);
    const gap = ".".repeat(glyphs.petGap);
    return centredRows(face, height).map((row, y) => row + gap + textRows[y]);
}

/** The readout in words. */
function spokenReadout(display, pet) {
    if (display.value === null) {
        const state = thermalPressures[display.pressure].title.toLowerCase();
        return `Temperature unavailable. Thermal state ${state}.`;
    }
    const degrees = `${display.value} degrees ${temperatureUnits[display.unit].title}`;
    if (petRows(pet, display.mood, false)) {
        return `${degrees}, ${rowOf(glyphs.moods, display.mood).title.toLowerCase()}`;
    }
    return display.isHot ? `${degrees}, running hot` : degrees;
}
