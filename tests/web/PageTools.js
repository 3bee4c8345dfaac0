// Put into a page before its own scripts: what the tests look with.
window.pageTools = {
    /**
     * Art rows as a readout's canvas shows them, whatever its colour; "?" for a cell that is not one whole square (or
     * one dot).
     */
    rowsOf(art, columns, isRound) {
        const canvas = art.shadowRoot.querySelector("canvas");
        const pixels = canvas.width / columns;
        const { data } = canvas.getContext("2d").getImageData(0, 0, canvas.width, canvas.height);
        const full = data.reduce((most, value, index) => (index % 4 === 3 ? Math.max(most, value) : most), 0);
        const isGhost = (alpha) => Math.abs(alpha - 0.12 * full) < 1.5;
        const inkAt = (column, row) => {
            const alphas = new Set();
            for (let y = row * pixels; y < (row + 1) * pixels; y++) {
                for (let x = column * pixels; x < (column + 1) * pixels; x++) {
                    alphas.add(data[(y * canvas.width + x) * 4 + 3]);
                }
            }
            const [alpha] = alphas;
            if (isRound) {
                return Math.max(...alphas) === 0 ? "." : Math.max(...alphas) > 128 ? "#" : "?";
            }
            return alphas.size > 1 ? "?" : alpha === full ? "#" : alpha === 0 ? "." : isGhost(alpha) ? ":" : "?";
        };
        const rows = Math.round(canvas.height / pixels);
        const row = (_, y) => Array.from({ length: columns }, (__, x) => inkAt(x, y)).join("");
        return Array.from({ length: rows }, row);
    },

    /** Resolves when the page's own observers know that the element is in view. */
    inView(element) {
        return new Promise((resolve) => new IntersectionObserver(() => resolve(true)).observe(element));
    },

    setSlider(celsius) {
        const slider = document.getElementById("celsius");
        slider.value = celsius;
        slider.dispatchEvent(new InputEvent("input", { bubbles: true }));
    },
};
