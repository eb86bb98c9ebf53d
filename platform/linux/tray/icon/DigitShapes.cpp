#include "platform/linux/tray/icon/DigitShapes.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>

namespace vorlane::platform {

namespace {

using Box = BitPicture::Box;

// The three bars of a character, top to bottom, and the four posts between them.
enum Stroke : unsigned {
    top = 1,
    middle = 2,
    bottom = 4,
    leftUpper = 8,
    leftLower = 16,
    rightUpper = 32,
    rightLower = 64
};

struct Character {
    char name;
    unsigned strokes;
};

constexpr unsigned left = leftUpper | leftLower;
constexpr unsigned right = rightUpper | rightLower;
constexpr unsigned bars = top | middle | bottom;

constexpr std::array characters{Character{'0', top | bottom | left | right},
                                Character{'2', bars | rightUpper | leftLower},
                                Character{'3', bars | right},
                                Character{'4', middle | leftUpper | right},
                                Character{'5', bars | leftUpper | rightLower},
                                Character{'6', bars | left | rightLower},
                                Character{'7', top | right},
                                Character{'8', bars | left | right},
                                Character{'9', bars | leftUpper | right},
                                Character{'h', middle | left | rightLower}};

// The measures of a line of text, in pixels.
struct Face {
    int width;  // of all characters except '1' and ':'
    int height;
    int post;   // thickness of vertical strokes
    int bar;    // thickness of horizontal strokes
    int space;  // between characters
};

const Character* find(char name)
{
    const auto* const found =
        std::find_if(characters.begin(), characters.end(),
                     [name](const Character& character) { return character.name == name; });
    return found == characters.end() ? nullptr : found;
}

int widthOf(char name, const Face& face)
{
    if (name == ':') return face.post;
    return name == '1' ? std::min(face.width, 2 * face.post) : face.width;
}

int widthOf(const std::string& line, const Face& face)
{
    int width = -face.space;
    for (const auto name : line) width += widthOf(name, face) + face.space;
    return width;
}

// Characters are at least 3 pixels wide, so that digits have a hole. Characters of little height
// may be as wide as they are high.
Face largest(const std::string& line, const Box& box)
{
    const int bold = std::max(1, std::min(box.width + 5, box.height * 2 + 10) / 11);
    Face face{.width = (box.height + 5) / 2, .height = box.height, .post = 0, .bar = 0, .space = 0};
    for (; face.width >= 3; --face.width) {
        face.post = std::min(bold, (face.width - 1) / 2);
        face.bar = std::min(bold, (face.height - 2) / 3);
        face.space = std::max(1, face.post / 2);
        if (widthOf(line, face) <= box.width) break;
    }
    return face;
}

// Draws a "1": a post with a slanted flag on its left.
void drawOne(BitPicture& picture, int x, int y, const Face& face)
{
    const int flag = widthOf('1', face) - face.post;
    picture.fill({x + flag, y, face.post, face.height});
    for (int row = 1; row < face.bar + flag; ++row) {
        const int length = std::min(row, flag);
        picture.fill({x + flag - length, y + row, length, 1});
    }
}

void drawColon(BitPicture& picture, int x, int y, const Face& face)
{
    const int dot = std::max(face.bar, face.post);
    const int upper = (face.height - 2 * dot) / 3;
    picture.fill({x, y + upper, face.post, dot});
    picture.fill({x, y + face.height - upper - dot, face.post, dot});
}

// Rounds the outer corner where two strokes meet, and the end of the middle bar where one of the
// two posts on that side is missing.
void roundCorners(BitPicture& picture, int x, int y, const Face& face, unsigned strokes)
{
    const int cut = std::min(face.bar, face.post) / 2;
    const int farEdge = x + face.width - cut;
    const int lowerEdge = y + face.height - cut;
    const int upperOfMiddle = y + (face.height - face.bar) / 2;
    const int lowerOfMiddle = upperOfMiddle + face.bar - cut;
    const auto round = [&](int column, int row, unsigned with, unsigned without) {
        if ((strokes & (with | without)) == with) picture.clear({column, row, cut, cut});
    };
    round(x, y, top | leftUpper, 0);
    round(farEdge, y, top | rightUpper, 0);
    round(x, lowerEdge, bottom | leftLower, 0);
    round(farEdge, lowerEdge, bottom | rightLower, 0);
    round(x, upperOfMiddle, middle | leftLower, leftUpper);
    round(x, lowerOfMiddle, middle | leftUpper, leftLower);
    round(farEdge, upperOfMiddle, middle | rightLower, rightUpper);
    round(farEdge, lowerOfMiddle, middle | rightUpper, rightLower);
}

// Gives 3 and 8 a waist: a bold 8 whose holes are one pixel high looks like a 0.
void cutWaist(BitPicture& picture, int x, int y, const Face& face, unsigned strokes)
{
    const int cut = face.post / 2;
    const int centre = y + (face.height - face.bar) / 2;
    if ((strokes & (bars | right)) != (bars | right)) return;
    if (strokes & leftUpper && !(strokes & leftLower)) return;  // 9
    picture.clear({x + face.width - cut, centre, cut, face.bar});
    if (strokes & leftUpper) picture.clear({x, centre, cut, face.bar});
}

void drawCharacter(BitPicture& picture, int x, int y, const Face& face, unsigned strokes)
{
    const int centre = (face.height - face.bar) / 2;
    const int farPost = x + face.width - face.post;
    const int upper = centre + face.bar;
    const int lower = face.height - centre;
    if (strokes & top) picture.fill({x, y, face.width, face.bar});
    if (strokes & middle) picture.fill({x, y + centre, face.width, face.bar});
    if (strokes & bottom) picture.fill({x, y + face.height - face.bar, face.width, face.bar});
    if (strokes & leftUpper) picture.fill({x, y, face.post, upper});
    if (strokes & leftLower) picture.fill({x, y + centre, face.post, lower});
    if (strokes & rightUpper) picture.fill({farPost, y, face.post, upper});
    if (strokes & rightLower) picture.fill({farPost, y + centre, face.post, lower});
    roundCorners(picture, x, y, face, strokes);
    cutWaist(picture, x, y, face, strokes);
}

}  // namespace

bool drawDigits(BitPicture& picture, const Box& box, std::string_view line)
{
    std::string known;
    std::copy_if(line.begin(), line.end(), std::back_inserter(known),
                 [](char name) { return name == '1' || name == ':' || find(name); });
    if (known.empty()) return true;
    const auto face = largest(known, box);
    if (face.width < 3 || face.bar < 1) return false;

    int x = box.x + (box.width - widthOf(known, face)) / 2;
    for (const auto name : known) {
        if (name == '1') drawOne(picture, x, box.y, face);
        if (name == ':') drawColon(picture, x, box.y, face);
        if (const auto* const other = find(name)) {
            drawCharacter(picture, x, box.y, face, other->strokes);
        }
        x += widthOf(name, face) + face.space;
    }
    return true;
}

}  // namespace vorlane::platform
