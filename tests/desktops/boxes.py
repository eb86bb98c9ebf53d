"""Boxes on the screen: left, top, right, bottom."""


def beside(window, item, gap=60):
    """Whether the window is above or below the item, near it, and overlaps it horizontally."""
    overlaps = window[0] < item[2] and item[0] < window[2]
    return overlaps and (0 <= item[1] - window[3] <= gap or 0 <= window[1] - item[3] <= gap)


def middle(box):
    left, top, right, bottom = box
    return (left + right) // 2, (top + bottom) // 2


def size_of(box):
    left, top, right, bottom = box
    return [right - left, bottom - top]
