// Which way the pointer takes to another display. No part of the shell is needed here.

/** The rectangle (x, y, width, height) that holds the place; undefined for none. */
function holding(monitors, [x, y]) {
    return monitors.find(monitor =>
        x >= monitor.x && x < monitor.x + monitor.width && y >= monitor.y && y < monitor.y + monitor.height);
}

function centreOf(monitor) {
    return [monitor.x + monitor.width / 2, monitor.y + monitor.height / 2];
}

function isAtEdge({x: left, y: top, width, height}, [x, y]) {
    return x < left + 1 || y < top + 1 || x >= left + width - 1 || y >= top + height - 1;
}

/**
 * Where to send the pointer on its way, the target included. The shell holds a pointer up that runs against the edge of
 * a display, and opens the overview when it hits a corner: so the way leads over the middle of both displays. It also
 * leads over the middle of the only one from its edge: from the line of the barrier beside the panel a pointer can go
 * up and down alone. Throws for a place that is no number, from which no motion would bring the pointer back.
 */
export function route(monitors, from, to) {
    if (!to.every(Number.isFinite))
        throw new RangeError(`no place: ${to}`);
    const left = holding(monitors, from);
    const entered = holding(monitors, to);
    if (!left || !entered)
        return [to];
    if (left !== entered)
        return [centreOf(left), centreOf(entered), to];
    return isAtEdge(left, from) ? [centreOf(left), to] : [to];
}
