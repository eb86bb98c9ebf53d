// A small one-bit picture that shapes are drawn into.
#pragma once

#include <cstddef>
#include <vector>

namespace vorlane::platform {

class BitPicture {
public:
    struct Box {
        int x, y, width, height;

        friend bool operator==(const Box&, const Box&) = default;
    };

    // Starts empty. A negative side counts as 0.
    BitPicture(int width, int height)
        : width_(width < 0 ? 0 : width),
          height_(height < 0 ? 0 : height),
          bits(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_))
    {}

    int width() const { return width_; }
    int height() const { return height_; }

    // False outside the picture.
    bool at(int x, int y) const { return inside(x, y) && bits[index(x, y)]; }

    // Clips to the picture.
    void fill(const Box& box) { set(box, true); }
    void clear(const Box& box) { set(box, false); }

private:
    bool inside(int x, int y) const { return x >= 0 && y >= 0 && x < width_ && y < height_; }

    std::size_t index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }

    void set(const Box& box, bool drawn)
    {
        for (int y = box.y; y < box.y + box.height; ++y) {
            for (int x = box.x; x < box.x + box.width; ++x) {
                if (inside(x, y)) bits[index(x, y)] = drawn;
            }
        }
    }

    int width_;
    int height_;
    std::vector<bool> bits;
};

}  // namespace vorlane::platform
