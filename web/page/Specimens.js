"use strict";

const faceCell = innerWidth < 700 ? 6 : 8;
const characterNames = { "-": "minus", "°": "degree sign", "~": "flame", " ": "blank" };

function moodFigure(pet, mood) {
    const picture = makePicture(pet.moods[mood.id], faceCell, arcade, `${pet.title}, ${mood.title.toLowerCase()}`);
    return make("figure", { className: mood.id }, picture, make("figcaption", {}, mood.title));
}

function blinkFigure(pet) {
    const picture = makePicture(pet.blink, faceCell, arcade, `${pet.title}, blinking`);
    return make("figure", { className: "blink" }, picture, make("figcaption", {}, "Blink"));
}

for (const pet of glyphs.pets.filter((each) => each.blink)) {
    const faces = make(
        "div",
        { className: "faces" },
        ...glyphs.moods.map((mood) => moodFigure(pet, mood)),
        blinkFigure(pet),
    );
    find("pet-specimens").append(make("article", {}, make("h3", {}, pet.title), make("p", {}, pet.subtitle), faces));
}

/** Digits first, then the rest in the order of their code points. */
function charactersOf(font) {
    const isDigit = (character) => /\d/.test(character);
    return Object.keys(font.glyphs).sort((a, b) => isDigit(b) - isDigit(a) || a.codePointAt(0) - b.codePointAt(0));
}

for (const style of glyphs.styles) {
    const font = glyphs.fonts[style.font];
    const characters = charactersOf(font).map((character) => {
        const name = characterNames[character] ?? character;
        return make("li", { title: name }, makePicture(font.glyphs[character], style.round ? 6 : 4, style, name));
    });
    find("style-specimens").append(
        make(
            "article",
            {},
            make("h3", {}, style.title),
            make("p", {}, style.subtitle),
            make("ul", { className: "characters", "aria-label": `${style.title}, all characters` }, ...characters),
        ),
    );
}

/** Every pet in every mood, a row a pet. */
find("crowd").append(
    ...glyphs.pets
        .filter((pet) => pet.blink)
        .flatMap((pet) =>
            glyphs.moods.map((mood) =>
                make("span", { className: mood.id }, makePicture(pet.moods[mood.id], faceCell - 3, arcade)),
            ),
        ),
);
