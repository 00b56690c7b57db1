#pragma once

#include "Platform/AVFoundation/PictureSink.h"

#include <QVideoFrame>

namespace anadrome {

/// A copy of the picture with its colour, its turn and its time in microseconds: NV12 for '420v', and for
/// 'x420' P010 if it is of high dynamic range, else P016. A transform that does more than turn and mirror by
/// right angles is taken for the nearest that doesn't. An invalid frame for other formats, and if there is no
/// memory.
QVideoFrame frameWith(const ShownPicture& picture);

} // namespace anadrome
