#!/usr/bin/env python3
"""Makes coastlines.bin from countries-50m.json of the npm package world-atlas; README.md tells the format.

    make_coastlines.py countries-50m.json coastlines.bin
"""

import json
import struct
import sys
import zlib
from collections import Counter

GRID = 100  # steps a degree
WEST, EAST = -180 * GRID, 180 * GRID
SOUTH = -89 * GRID - GRID * 9 // 10  # what lies beyond is the lower edge of a rectangular map


def arc_numbers(geometry):
    """The numbers of a country's arcs, each as often as it is used; ~n is arc n backwards."""
    rings = geometry.get("arcs", [])
    if geometry["type"] == "Polygon":
        rings = [rings]
    elif geometry["type"] != "MultiPolygon":
        return
    for polygon in rings:
        for ring in polygon:
            for number in ring:
                yield number if number >= 0 else ~number


def points_of(arc, transform):
    """An arc's points on the grid, longitude first, repetitions left out."""
    (scale_x, scale_y), (left, bottom) = transform["scale"], transform["translate"]
    x = y = 0
    points = []
    for step_x, step_y in arc:
        x, y = x + step_x, y + step_y
        point = (round((x * scale_x + left) * GRID), round((y * scale_y + bottom) * GRID))
        if not points or point != points[-1]:
            points.append(point)
    return points


def cut_at_180(points):
    """The pieces of a line, none of which crosses the meridian of 180 degrees."""
    piece = points[:1]
    for one, other in zip(points, points[1:]):
        if abs(other[0] - one[0]) > EAST:
            side = EAST if one[0] > 0 else WEST
            width = other[0] + 2 * side - one[0]
            part = (side - one[0]) / width if width else 0
            y = round(one[1] + part * (other[1] - one[1]))
            yield piece + [(side, y)]
            piece = [(-side, y)]
        piece.append(other)
    yield piece


def without_artefacts(points):
    """The pieces of a line that are left where the map of the source is cut and no coast is."""
    piece = points[:1]
    for one, other in zip(points, points[1:]):
        if one == other:
            continue
        if (abs(one[0]) == EAST and one[0] == other[0]) or (one[1] < SOUTH and other[1] < SOUTH):
            if len(piece) > 1:
                yield piece
            piece = []
        piece.append(other)
    if len(piece) > 1:
        yield piece


def place(point):
    """A point on the globe, where the easternmost and the westernmost meridian are one."""
    return (WEST if point[0] == EAST else point[0], point[1])


def loose_ends(lines):
    """The places where an odd number of lines ends."""
    ends = Counter(place(line[i]) for line in lines for i in (0, -1))
    return sorted(p for p, times in ends.items() if times % 2)


def close(coasts):
    """Lets coasts that cross the cut of the source meet: its two sides may differ by a step of the grid."""
    loose = loose_ends(coasts)
    for one, other in zip(loose[::2], loose[1::2]):
        if one[0] != WEST or other[0] != WEST or abs(one[1] - other[1]) > 1:
            sys.exit(f"a coast ends at {one}")
        for line in coasts:
            for i in (0, -1):
                if place(line[i]) == other:
                    line[i] = (line[i][0], one[1])


def varint(value):
    out = bytearray()
    while value > 127:
        out.append(value & 127 | 128)
        value >>= 7
    out.append(value)
    return out


def zigzag(value):
    return value * 2 if value >= 0 else -value * 2 - 1


def packed(lines):
    out = varint(len(lines))
    x = y = 0
    for line in lines:
        out += varint(len(line))
        for point in line:
            out += varint(zigzag(point[0] - x)) + varint(zigzag(point[1] - y))
            x, y = point
    return out


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        topology = json.load(file)
    used = Counter(n for country in topology["objects"]["countries"]["geometries"] for n in arc_numbers(country))
    lines = {1: [], 2: []}
    for number, times in sorted(used.items()):
        for piece in cut_at_180(points_of(topology["arcs"][number], topology["transform"])):
            lines[times] += without_artefacts(piece)
    coasts, borders = lines[1], lines[2]

    close(coasts)  # land can be told from sea only when every coast is closed
    assert not loose_ends(coasts)

    plain = b"VXC1" + packed(coasts) + packed(borders)
    with open(sys.argv[2], "wb") as file:
        file.write(struct.pack(">I", len(plain)) + zlib.compress(plain, 9))
    points = [sum(map(len, part)) for part in (coasts, borders)]
    print(f"{len(coasts)} coasts of {points[0]} points, {len(borders)} borders of {points[1]} points, {len(plain)} bytes plain")


if __name__ == "__main__":
    main()
