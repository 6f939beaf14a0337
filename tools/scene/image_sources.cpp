#include "tools/scene/image_sources.h"

#include <cstdlib>

namespace se_scene {

std::vector<AxisImage> imagesAlong(double source, double size, double listener, double reach) {
    std::vector<AxisImage> images;
    const int rooms = static_cast<int>(reach / (2 * size)) + 1;
    for (int n = -rooms; n <= rooms; ++n) {
        for (int mirrored = 0; mirrored <= 1; ++mirrored) {
            const double position = (mirrored == 1 ? -source : source) + 2 * n * size - listener;
            if (std::abs(position) <= reach)
                images.push_back({position, std::abs(n - mirrored) + std::abs(n)});
        }
    }
    return images;
}

}  // namespace se_scene
