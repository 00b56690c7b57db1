#include "Models/ReversedSampleBuffer.h"

#include "Platform/Foundation/Print.h"

#include <algorithm>
#include <cstring>

namespace anadrome {

CMSampleBufferRef reversedSampleBuffer(const CMSampleBufferRef& buffer,
                                       std::span<const CMSampleTimingInfo> timings) {
    AudioBufferList list;
    CMBlockBufferRef block;
    CMSampleBufferGetAudioBufferListWithRetainedBlockBuffer(buffer, &list, &block);
    const AudioBuffer& audio = list.mBuffers[0];
    if (!audio.mData)
        return nullptr;

    // A trailing odd byte isn't part of a word; it stays where it is.
    std::vector<std::int16_t> words(audio.mDataByteSize / 2);
    std::memcpy(words.data(), audio.mData, words.size() * 2);
    std::ranges::reverse(words);
    if (!block)
        fatalError("reversedSampleBuffer: sound without a block buffer");
    if (!words.empty() &&
        CMBlockBufferReplaceDataBytes(words.data(), block, 0, words.size() * 2) != kCMBlockBufferNoErr)
        return nullptr;

    CMSampleBufferRef reversed;
    const OSStatus status = CMSampleBufferCreate(block, CMSampleBufferGetFormatDescription(buffer),
                                                 CMSampleBufferGetNumSamples(buffer), timings, {}, &reversed);
    return status == 0 ? reversed : buffer;
}

} // namespace anadrome
