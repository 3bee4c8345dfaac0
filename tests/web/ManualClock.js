// Put into a page before its own scripts: timers fire only when the test advances the clock.
{
    const timers = new Map();
    let now = 0;
    let lastId = 0;

    const add = (callback, delay, period) => {
        lastId += 1;
        timers.set(lastId, { callback, due: now + Number(delay ?? 0), period });
        return lastId;
    };
    window.setTimeout = (callback, delay) => add(callback, delay, null);
    window.setInterval = (callback, delay) => add(callback, delay, Math.max(1, Number(delay)));
    window.clearTimeout = (id) => void timers.delete(id);
    window.clearInterval = window.clearTimeout;

    window.manualClock = {
        advance(milliseconds) {
            const end = now + milliseconds;
            for (;;) {
                const [id, timer] = [...timers].sort(([, a], [, b]) => a.due - b.due)[0] ?? [];
                if (!timer || timer.due > end) {
                    break;
                }
                now = timer.due;
                if (timer.period === null) {
                    timers.delete(id);
                } else {
                    timer.due += timer.period;
                }
                timer.callback();
            }
            now = end;
        },
    };
}
