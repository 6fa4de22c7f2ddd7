// prepare_shading: the tables that the shading phase needs and no earlier pass does.

#pragma once

struct SessionRecord;

// Once per render, before the first shaded row.
void prepareShading(SessionRecord* session);
