// cone_kernel: the cone that marks how near the outside is, and its versions shifted by a fraction
// of a pixel that edge stamping uses.
//
// radiusConstants   effective radius, cone step, kernel stride
// buildConeKernel   the cone, once per render
// buildEdgeKernel   half a cone shifted toward one side, before each stamp

#pragma once

#include <cstdint>

struct SessionRecord;

// Side of the unselected pixel on which its selected neighbour lies.
constexpr int32_t kStampLeft = 0;
constexpr int32_t kStampRight = 1;
constexpr int32_t kStampUp = 2;
constexpr int32_t kStampDown = 3;

// Pixels at full size that a radius setting stands for, at least 1.
int32_t fullRadius(int32_t setting);

void radiusConstants(SessionRecord* session);
void buildConeKernel(SessionRecord* session);

// The cone at a squared distance in pixels.
int16_t coneAt(int32_t radius, int32_t squared);

// weight: 0 to 255. Keeps what is there when kind and weight are those of the last call.
void buildEdgeKernel(SessionRecord* session, int32_t kind, int32_t weight);
