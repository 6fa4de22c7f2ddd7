// preview_places: the rectangles of a preview. Around what it shows the field is built over a
// margin, so that a shape which goes on there has no edge at the frame.

#pragma once

#include <cstdint>

#include "services/rectangle.h"

struct SessionRecord;

// The filter rectangle, reduced; and what of it the frame shows.
Rectangle reducedPicture(const SessionRecord* session, int32_t factor);
Rectangle previewRect(const SessionRecord* session, int32_t factor);

// A rectangle with a margin on every side that reaches past what a bevel of that effective radius
// and the smoothing carry in, as far as there is a picture.
Rectangle withMargin(const Rectangle& rect, int32_t radius, const Rectangle& picture);

bool isSameRect(const Rectangle& a, const Rectangle& b);
bool isWithin(const Rectangle& inner, const Rectangle& outer);

// Makes a rectangle of the picture what the passes work on, with the selection where it lies in
// what the host has delivered.
void usePlace(SessionRecord* session, const Rectangle& rect);
