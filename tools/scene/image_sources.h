// The mirror images of a source in the walls of a shoebox room. Each represents one reflected path of the
// sound (Allen and Berkley, "Image method for efficiently simulating small-room acoustics", 1979).
#pragma once

#include "tools/scene/geometry.h"

namespace se_scene {

// The images between two opposite walls: their positions and numbers of reflections.
struct AxisImage {
    double position;
    int reflections;
};

// Positions are relative to the listener, those beyond `reach` metres left out.
std::vector<AxisImage> imagesAlong(double source, double size, double listener, double reach);

// Calls visit(position, reflections) for every image within `reach` metres of the listener, positions relative
// to it; the source itself is included, with no reflection.
template <typename Visit>
void visitImages(const RoomSize& room, const Point& source, const Point& listener, double reach,
                 Visit visit) {
    const auto along_x = imagesAlong(source.x, room.length_m, listener.x, reach);
    const auto along_y = imagesAlong(source.y, room.width_m, listener.y, reach);
    const auto along_z = imagesAlong(source.z, room.height_m, listener.z, reach);
    for (const AxisImage& x : along_x) {
        for (const AxisImage& y : along_y) {
            for (const AxisImage& z : along_z) {
                const Point position{x.position, y.position, z.position};
                if (length(position) <= reach) visit(position, x.reflections + y.reflections + z.reflections);
            }
        }
    }
}

}  // namespace se_scene
