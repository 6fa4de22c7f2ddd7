// texture_relief: presses the texture picture into the height field, resampled with a cubic.
//
// buildTextureColumns  once per render: which four texel columns each field column reads
// textureReliefRow     field row currentRow; allocates nothing

#pragma once

struct SessionRecord;

void buildTextureColumns(SessionRecord* session);
void textureReliefRow(SessionRecord* session);
