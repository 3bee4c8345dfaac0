// A headless Chromium, driven over pipes by its own protocol.
import { spawn } from "node:child_process";
import { mkdtemp, rm } from "node:fs/promises";
import { tmpdir } from "node:os";
import { join } from "node:path";

/** A guard against hanging, not a measure of speed. */
const patience = 300_000;
const messageEnd = "\0";

const switches = [
    "--headless=new",
    "--no-sandbox",
    "--disable-gpu",
    "--disable-quic",
    "--disable-dev-shm-usage",
    "--disable-background-networking",
    "--disable-component-update",
    "--disable-sync",
    "--disable-extensions",
    "--no-first-run",
    "--no-default-browser-check",
    "--mute-audio",
    "--hide-scrollbars",
    "--remote-debugging-pipe",
];

export class Browser {
    #process;
    #profile;
    #lastId = 0;
    #replies = new Map();
    #listeners = new Map();

    /** `scale`: device pixels per point of every page, as a real screen has them. */
    static async start({ scale = 1 } = {}) {
        const browser = new Browser();
        browser.#profile = await mkdtemp(join(tmpdir(), "thermopix-web-"));
        const profile = browser.#profile;
        browser.#process = spawn(
            process.env.THERMOPIX_CHROMIUM ?? "chromium",
            [
                ...switches,
                `--force-device-scale-factor=${scale}`,
                `--user-data-dir=${join(profile, "profile")}`,
                "about:blank",
            ],
            {
                stdio: ["ignore", "ignore", "ignore", "pipe", "pipe"],
                detached: true,
                env: {
                    PATH: process.env.PATH,
                    HOME: profile,
                    XDG_CONFIG_HOME: profile,
                    XDG_CACHE_HOME: profile,
                    LANG: "C.UTF-8",
                },
            },
        );
        browser.#process.on("error", (error) => browser.#fail(error));
        browser.#process.on("exit", (status) => browser.#fail(new Error(`chromium has ended (${status})`)));
        browser.#read(browser.#process.stdio[4]);
        return browser;
    }

    #fail(error) {
        for (const { reject } of this.#replies.values()) {
            reject(error);
        }
        this.#replies.clear();
    }

    #read(pipe) {
        let pending = "";
        pipe.setEncoding("utf8");
        pipe.on("data", (text) => {
            const messages = (pending + text).split(messageEnd);
            pending = messages.pop();
            messages.forEach((message) => this.#receive(JSON.parse(message)));
        });
    }

    #receive({ id, method, params, result, error, sessionId }) {
        if (id === undefined) {
            this.#listeners.get(sessionId)?.forEach((listener) => listener(method, params));
            return;
        }
        const reply = this.#replies.get(id);
        this.#replies.delete(id);
        if (error) {
            reply?.reject(new Error(error.message));
        } else {
            reply?.resolve(result);
        }
    }

    send(method, params = {}, sessionId = undefined) {
        const id = ++this.#lastId;
        return new Promise((resolve, reject) => {
            const giveUp = setTimeout(() => reject(new Error(`no answer to ${method}`)), patience);
            const settled = (settle) => (value) => {
                clearTimeout(giveUp);
                settle(value);
            };
            this.#replies.set(id, { resolve: settled(resolve), reject: settled(reject) });
            this.#process.stdio[3].write(JSON.stringify({ id, method, params, sessionId }) + messageEnd);
        });
    }

    listen(sessionId, listener) {
        this.#listeners.set(sessionId, [...(this.#listeners.get(sessionId) ?? []), listener]);
    }

    /** A tab of its own, with nothing shared between tabs. */
    async newPage(settings = {}) {
        const { browserContextId } = await this.send("Target.createBrowserContext");
        const { targetId } = await this.send("Target.createTarget", { url: "about:blank", browserContextId });
        const { sessionId } = await this.send("Target.attachToTarget", { targetId, flatten: true });
        const page = new Page(this, sessionId);
        await page.prepare(settings);
        return page;
    }

    async stop() {
        const ended = new Promise((resolve) => this.#process.once("exit", resolve));
        await this.send("Browser.close").catch(() => {});
        const kill = setTimeout(() => process.kill(-this.#process.pid, "SIGKILL"), patience);
        await ended;
        clearTimeout(kill);
        await rm(this.#profile, { recursive: true, force: true, maxRetries: 20, retryDelay: 100 });
    }
}

const keys = {
    Tab: { code: "Tab", windowsVirtualKeyCode: 9 },
    Enter: { code: "Enter", windowsVirtualKeyCode: 13, text: "\r" },
    " ": { code: "Space", windowsVirtualKeyCode: 32, text: " " },
    End: { code: "End", windowsVirtualKeyCode: 35 },
    Home: { code: "Home", windowsVirtualKeyCode: 36 },
    ArrowLeft: { code: "ArrowLeft", windowsVirtualKeyCode: 37 },
    ArrowUp: { code: "ArrowUp", windowsVirtualKeyCode: 38 },
    ArrowRight: { code: "ArrowRight", windowsVirtualKeyCode: 39 },
    ArrowDown: { code: "ArrowDown", windowsVirtualKeyCode: 40 },
};

const shift = 8;

export class Page {
    #browser;
    #sessionId;
    /** Every address asked for since the page was made. */
    requests = [];
    /** Uncaught exceptions and console errors. */
    errors = [];

    constructor(browser, sessionId) {
        this.#browser = browser;
        this.#sessionId = sessionId;
    }

    send(method, params = {}) {
        return this.#browser.send(method, params, this.#sessionId);
    }

    async prepare({ width = 1280, height = 900, scheme = "light", motion = "no-preference", before = "" }) {
        this.#browser.listen(this.#sessionId, (method, params) => {
            if (method === "Network.requestWillBeSent") {
                this.requests.push(params.request.url);
            } else if (method === "Runtime.exceptionThrown") {
                this.errors.push(params.exceptionDetails.exception?.description ?? params.exceptionDetails.text);
            } else if (method === "Log.entryAdded" && params.entry.level === "error") {
                this.errors.push(params.entry.text);
            }
        });
        await Promise.all([
            this.send("Page.enable"),
            this.send("Runtime.enable"),
            this.send("Network.enable"),
            this.send("Log.enable"),
            this.send("Page.addScriptToEvaluateOnNewDocument", { source: before }),
            this.resize({ width, height }),
            this.prefer({ scheme, motion }),
        ]);
    }

    /** `scale` replaces the browser's own number of device pixels per point; 0 keeps it. */
    resize({ width, height, scale = 0 }) {
        const settings = { width, height, deviceScaleFactor: scale, mobile: false };
        return this.send("Emulation.setDeviceMetricsOverride", settings);
    }

    prefer({ scheme, motion }) {
        const features = [
            { name: "prefers-color-scheme", value: scheme },
            { name: "prefers-reduced-motion", value: motion },
        ];
        return this.send("Emulation.setEmulatedMedia", { features });
    }

    /** Resolves when the page and all it asks for have loaded. */
    async open(url) {
        const loaded = new Promise((resolve) => {
            this.#browser.listen(this.#sessionId, (method) => method === "Page.loadEventFired" && resolve());
        });
        const { errorText } = await this.send("Page.navigate", { url });
        if (errorText) {
            throw new Error(`${url}: ${errorText}`);
        }
        await loaded;
        await this.evaluate(() => new Promise(requestAnimationFrame));
    }

    /** Runs a function inside the page; what it returns has to survive JSON. */
    async evaluate(whatToDo, ...values) {
        const expression = `(${whatToDo})(...${JSON.stringify(values)})`;
        const settings = { expression, awaitPromise: true, returnByValue: true, userGesture: true };
        const { result, exceptionDetails } = await this.send("Runtime.evaluate", settings);
        if (exceptionDetails) {
            throw new Error(exceptionDetails.exception?.description ?? exceptionDetails.text);
        }
        return result.value;
    }

    async press(key, { withShift = false } = {}) {
        const event = { key, ...keys[key], modifiers: withShift ? shift : 0 };
        await this.send("Input.dispatchKeyEvent", { type: "keyDown", ...event });
        await this.send("Input.dispatchKeyEvent", { type: "keyUp", ...event });
    }

    /** A PNG of the part of the page inside a box (of the whole view without one), in device pixels. */
    async screenshot(clip = undefined) {
        const settings = {
            format: "png",
            captureBeyondViewport: clip !== undefined,
            clip: clip && { ...clip, scale: 1 },
        };
        const { data } = await this.send("Page.captureScreenshot", settings);
        return Buffer.from(data, "base64");
    }

    /** What a screen reader meets, in reading order. */
    async accessibilityTree() {
        await this.send("Accessibility.enable");
        const { nodes } = await this.send("Accessibility.getFullAXTree");
        const byId = new Map(nodes.map((node) => [node.nodeId, node]));
        const inOrder = (node) => [node, ...(node.childIds ?? []).flatMap((id) => inOrder(byId.get(id)))];
        return inOrder(nodes[0])
            .filter((node) => !node.ignored)
            .map(({ role, name }) => ({ role: role.value, name: name?.value ?? "" }));
    }
}
