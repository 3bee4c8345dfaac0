"use strict";

function pictureFigure(fileName, description) {
    const image = make("img", { src: fileName, alt: "", decoding: "async" });
    return make("figure", {}, image, make("figcaption", {}, description));
}

/** Enlarges a shelf's pictures alike, by as many whole device pixels per pixel as its columns allow. */
function enlargePictures(shelf) {
    const images = [...shelf.querySelectorAll("img")].filter((image) => image.naturalWidth > 0);
    const room = images.map((image) => (image.parentElement.clientWidth * devicePixelRatio) / image.naturalWidth);
    const pixels = Math.max(1, Math.floor(Math.min(...room)));
    for (const image of images) {
        image.style.width = cssLength(image.naturalWidth * pixels);
    }
}

function fillShelf(id, figures) {
    const shelf = find(id);
    shelf.append(...figures);
    shelf.addEventListener("load", () => enlargePictures(shelf), { capture: true });
    new ResizeObserver(() => enlargePictures(shelf)).observe(shelf);
    watchDevicePixels(() => enlargePictures(shelf));
}

fillShelf(
    "style-pictures",
    glyphs.styles.map((style) => pictureFigure(`style-${style.id}.png`, style.title)),
);
fillShelf(
    "pet-pictures",
    glyphs.pets
        .filter((pet) => pet.blink)
        .flatMap((pet) =>
            glyphs.moods.map((mood) =>
                pictureFigure(`pet-${pet.id}-${mood.id}.png`, `${pet.title}, ${mood.title.toLowerCase()}`),
            ),
        ),
);
