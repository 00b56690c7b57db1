#include "Platform/AVFoundation/SoundSink.h"

#include <utility>

namespace anadrome {

namespace {

SoundSinkFactory& factoryInUse() {
    static SoundSinkFactory factory;
    return factory;
}

} // namespace

void setSoundSinkFactory(SoundSinkFactory factory) {
    factoryInUse() = std::move(factory);
}

std::unique_ptr<SoundSink> openSoundSink() {
    return factoryInUse() ? factoryInUse()() : nullptr;
}

} // namespace anadrome
