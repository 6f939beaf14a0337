// A shoebox room: the position of the array and the reflections of the walls.
#pragma once

#include "tools/scene/propagation.h"

namespace se_scene {

// The array's centre, relative to the corner of the room: near the middle, but on no line of symmetry.
Point arrayInRoom(const RoomSize& room);

// Whether a point, relative to the array, is in the room and not too close to a wall.
bool isInRoom(const RoomSize& room, const Point& point);

// Direct sound and all reflections that arrive within the reverberation time.
ImpulseResponses roomResponses(const RoomSize& room, double reverberation_s, const Point& source,
                               const MicrophonePositions& microphones);

}  // namespace se_scene
