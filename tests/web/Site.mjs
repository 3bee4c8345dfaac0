// The assembled page, on a server of this test's own or as a file.
import { readFile } from "node:fs/promises";
import { createServer } from "node:http";
import { extname, join, normalize } from "node:path";
import { pathToFileURL } from "node:url";

/** The folder that web/assemble has filled. */
export const siteFolder = process.env.THERMOPIX_WEB_SITE;

/** What the product's own rasterizer and monitor say, written by thermopix_web_expectations. */
export async function expectations() {
    return JSON.parse(await readFile(process.env.THERMOPIX_WEB_EXPECTATIONS, "utf8"));
}

export const fileAddress = pathToFileURL(join(siteFolder, "index.html")).href;

const types = {
    ".html": "text/html",
    ".js": "text/javascript",
    ".css": "text/css",
    ".json": "application/json",
    ".png": "image/png",
};

export class Site {
    #server;
    #extra = new Map();

    /** `extra` holds further pages by path. */
    static async start(extra = {}) {
        const site = new Site();
        site.#extra = new Map(Object.entries(extra));
        site.#server = createServer((request, response) => site.#answer(request, response));
        await new Promise((resolve) => site.#server.listen(0, "127.0.0.1", resolve));
        return site;
    }

    get address() {
        return `http://127.0.0.1:${this.#server.address().port}/`;
    }

    async #answer(request, response) {
        const path = new URL(request.url, this.address).pathname;
        if (this.#extra.has(path)) {
            response.writeHead(200, { "content-type": "text/html" }).end(this.#extra.get(path));
            return;
        }
        try {
            const file = path === "/" ? "index.html" : normalize(path);
            const bytes = await readFile(join(siteFolder, file));
            response.writeHead(200, { "content-type": types[extname(file)] ?? "application/octet-stream" }).end(bytes);
        } catch {
            response.writeHead(404).end();
        }
    }

    stop() {
        this.#server.closeAllConnections();
        return new Promise((resolve) => this.#server.close(resolve));
    }
}
