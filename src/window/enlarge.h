#pragma once
// Small pictures made larger without losing their single pixels.

#include <QImage>

namespace veltrix {

/// The picture at a larger size, in 32 bits: each new pixel is the mean of the old ones that it covers, so
/// that whole multiples come out pixel by pixel and other sizes stay crisp. REQUIRES Format_RGB32 and a size
/// no smaller than the picture's.
QImage Enlarged(const QImage& image, QSize size);

}  // namespace veltrix
