// resource_image_qt: the module's icons and cursors as Qt has pictures.

#pragma once

#include <QImage>
#include <cstdint>

// Pixels of three bytes; coverage a byte a pixel.
QImage coveredImage(int32_t width, int32_t height, const uint8_t* rgb, const uint8_t* coverage);

// An icon by its resource number; a null image when there is none.
// At the scale that is nearest.
QImage resourceIcon(int32_t id, int32_t scale = 100);
