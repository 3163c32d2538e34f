"""Draws a glide's table (time in ms, x, y; the departure first) against the ease-out curve, as SVG on stdout."""

import math
import sys

WIDTH, HEIGHT = 640, 360
LEFT, RIGHT, TOP, BOTTOM = 52, 16, 44, 40
TICKS, DURATION = 18, 160.0
LONGEST = 180.0

STYLE = """
text { font: 12px sans-serif; fill: #57606a; }
.title { font-size: 14px; fill: #24292f; }
.grid { stroke: #d0d7de; stroke-width: 1; }
.curve { stroke: #0969da; stroke-width: 2; fill: none; }
.tick { fill: #bc4c00; }
@media (prefers-color-scheme: dark) {
  text { fill: #9198a1; }
  .title { fill: #e6edf3; }
  .grid { stroke: #3d444d; }
  .curve { stroke: #4493f8; }
  .tick { fill: #f0883e; }
}
"""


def place_x(milliseconds):
    return LEFT + (WIDTH - LEFT - RIGHT) * milliseconds / LONGEST


def place_y(share):
    return HEIGHT - BOTTOM - (HEIGHT - TOP - BOTTOM) * share


def eased(milliseconds):
    return 1 - (1 - min(milliseconds / DURATION, 1)) ** 3


def draw(rows):
    (_, start_x, start_y), (_, end_x, end_y) = rows[0], rows[-1]
    length = math.hypot(end_x - start_x, end_y - start_y)
    yield (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" width="{WIDTH}" '
           f'height="{HEIGHT}" role="img">')
    yield f'<title>A glide of {length:.0f} points: its {TICKS} ticks lie on the ease-out curve</title>'
    yield f'<style>{STYLE}</style>'
    yield (f'<text class="title" x="{LEFT}" y="24">A glide from ({start_x:.0f}, {start_y:.0f}) to ({end_x:.0f}, '
           f'{end_y:.0f}), as a client of the X server saw it</text>')
    for percent in range(0, 101, 25):
        y = place_y(percent / 100)
        yield f'<line class="grid" x1="{LEFT}" y1="{y:.1f}" x2="{WIDTH - RIGHT}" y2="{y:.1f}"/>'
        yield f'<text x="{LEFT - 8}" y="{y + 4:.1f}" text-anchor="end">{percent} %</text>'
    for time in range(0, int(LONGEST) + 1, 40):
        x = place_x(time)
        yield f'<line class="grid" x1="{x:.1f}" y1="{place_y(1):.1f}" x2="{x:.1f}" y2="{place_y(0):.1f}"/>'
        yield f'<text x="{x:.1f}" y="{HEIGHT - 20}" text-anchor="middle">{time} ms</text>'
    curve = ' '.join(f'{place_x(time):.1f},{place_y(eased(time)):.1f}' for time in range(0, int(LONGEST) + 1, 2))
    yield f'<polyline class="curve" points="{curve}"/>'
    for time, x, y in rows:
        share = math.hypot(x - start_x, y - start_y) / length
        yield (f'<circle class="tick" cx="{place_x(min(time, LONGEST)):.1f}" cy="{place_y(share):.1f}" r="3.5">'
               f'<title>{time:.2f} ms: ({x:.0f}, {y:.0f})</title></circle>')
    yield (f'<text x="{place_x(92):.0f}" y="{place_y(0.3):.0f}"><tspan class="tick">●</tspan> where the pointer was'
           '</text>')
    yield (f'<text x="{place_x(92):.0f}" y="{place_y(0.2):.0f}"><tspan class="curve" style="stroke: none; fill: '
           '#4493f8">—</tspan> 1 − (1 − t / 160 ms)³</text>')
    yield '</svg>'


def main():
    with open(sys.argv[1], encoding='utf-8') as table:
        rows = [tuple(float(field) for field in line.split()) for line in table]
    if len(rows) != TICKS + 1:
        sys.exit(f'{sys.argv[1]}: {len(rows)} lines instead of the departure and {TICKS} ticks')
    print('\n'.join(draw(rows)))


if __name__ == '__main__':
    main()
