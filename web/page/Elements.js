"use strict";

customElements.define("pixel-art", PixelArt);

const arcade = rowOf(glyphs.styles, "arcade");

/** An element with properties, attributes (names with a dash) and children. */
function make(tag, settings = {}, ...children) {
    const element = document.createElement(tag);
    for (const [name, value] of Object.entries(settings)) {
        if (name in element && !name.includes("-")) {
            element[name] = value;
        } else {
            element.setAttribute(name, value);
        }
    }
    element.append(...children);
    return element;
}

/** Art rows as an element; without a description screen readers skip it. */
function makePicture(rows, cell, style, description) {
    const picture = make("pixel-art");
    picture.show(rows, cell, style, description);
    return picture;
}

function find(id) {
    return document.getElementById(id);
}

const mark = glyphs.fonts.arcade5x7.glyphs["~"];
find("brand-mark").append(makePicture(mark, 4, arcade));

/** The mark as the icon of the browser's tab. */
function drawIcon() {
    const canvas = document.createElement("canvas");
    paintRows(canvas, mark, 8, 0, getComputedStyle(find("brand-mark").firstChild).color);
    find("icon").href = canvas.toDataURL();
}
drawIcon();
