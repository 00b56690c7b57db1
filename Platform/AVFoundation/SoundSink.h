#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>

namespace anadrome {

/// A sound device while one stretch of sound plays on it: opened for it, and closed by the destructor, which
/// drops at once what hasn't been heard. Pause, seek and mute all end a stretch. A frame is a left and a
/// right sample. Used on the main thread; no operation blocks.
///
/// Frames come about sixty times a second while the main thread is free, so a device wants room for a fifth
/// of a second or more.
class SoundSink {
public:
    virtual ~SoundSink() = default;

    /// Frames a second. Stays the same.
    virtual int sampleRate() const = 0;

    /// Takes as many of the frames as there is room for, and tells how many. Interleaved; full scale is from
    /// -1 to 1. A device that has nothing to play waits in silence for more.
    virtual std::size_t write(std::span<const float> samples) = 0;

    /// How many of the frames taken have left the speaker: not those that still lie in a buffer. Never falls.
    /// It may go in steps of up to a tenth of a second. The player's time follows it; when it stays where it
    /// is though there is something to play, the player goes on without sound.
    virtual std::int64_t heardFrames() const = 0;
};

/// Opens a device. Null if that fails: then play is silent.
using SoundSinkFactory = std::function<std::unique_ptr<SoundSink>()>;

/// What all players of the program get their sound devices from; a front end sets it once. None at first, and
/// none if it is empty. Main thread only.
void setSoundSinkFactory(SoundSinkFactory factory);

/// A new sink for a stretch of sound, or null. Main thread only.
std::unique_ptr<SoundSink> openSoundSink();

} // namespace anadrome
