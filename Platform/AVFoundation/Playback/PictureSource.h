#pragma once

#include "Platform/CoreMedia/CMTime.h"
#include "Platform/CoreVideo/CVPixelBuffer.h"

#include <cstddef>
#include <memory>
#include <optional>

namespace anadrome::playback {

class PictureDecoder;

enum class Direction { forwards, backwards };

/// A picture on its way to the screen.
struct TimedPicture {
    CVPixelBufferRef pixels;
    /// Of the picture in the file.
    CMTime time;
    /// How far play has to go from where it began until the picture comes on screen, whichever way it goes.
    /// It stays there until the next one is due.
    CMTime due;
};

/// Hands out a track's pictures one after another from a position, forwards or backwards. This is the one
/// place that knows how the two differ: to whom it hands them, play just goes on, by a distance that grows
/// from zero. One thread at a time.
class PictureSource {
public:
    virtual ~PictureSource() = default;

    /// Decodes one picture at most, so that the caller can think again in between. False when there is
    /// nothing to do before the next take(). The distance tells how far play has come.
    virtual bool work(const CMTime& distance) = 0;

    /// The next picture, if work() has brought it forth; the first is the one on screen at the position.
    /// Pictures whose time on screen has passed at the distance are left out, as far as there are others.
    virtual std::optional<TimedPicture> take(const CMTime& distance) = 0;

    /// Whether the track has no further picture this way.
    virtual bool isAtEnd() const = 0;

    /// What the pictures take that are kept to be handed out.
    virtual std::size_t cachedBytes() const = 0;
};

/// From the picture on screen at the position. The source uses the decoder alone, and keeps pictures of
/// `mostBytes` at most, or of two if those take more. The decoder must outlive it.
std::unique_ptr<PictureSource> makePictureSource(PictureDecoder& decoder, const CMTime& position,
                                                 Direction direction, std::size_t mostBytes);

} // namespace anadrome::playback
