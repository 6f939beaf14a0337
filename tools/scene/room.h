// A shoebox room: where the array stands in it and what its walls reflect.
#pragma once

#include "tools/scene/propagation.h"

namespace se_scene {

// The array's centre, seen from the corner of the room: near the middle, but on no line of symmetry.
Point arrayInRoom(const RoomSize& room);

// Whether a point, seen from the array, is in the room and off its walls.
bool isInRoom(const RoomSize& room, const Point& point);

// Direct sound and all reflections that arrive within the reverberation time.
ImpulseResponses roomResponses(const RoomSize& room, double reverberation_s, const Point& source,
                               const MicrophonePositions& microphones);

}  // namespace se_scene
