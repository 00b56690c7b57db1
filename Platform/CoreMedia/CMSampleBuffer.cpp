#include "Platform/CoreMedia/CMSampleBuffer.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace anadrome {

namespace {

bool isEntryCount(std::size_t entries, std::int64_t numSamples) {
    return entries <= 1 || entries == static_cast<std::size_t>(numSamples);
}

/// An error if the buffer doesn't hold sound in memory.
OSStatus checkSound(const CMSampleBuffer::Fields& fields) {
    if (!fields.formatDescription || fields.formatDescription->mediaType != CMMediaType::audio)
        return kCMSampleBufferError_InvalidMediaFormat;
    if (!fields.dataBuffer)
        return kCMSampleBufferError_BufferNotReady;
    if (CMBlockBufferGetDataLength(fields.dataBuffer) > std::numeric_limits<std::uint32_t>::max())
        return kCMSampleBufferError_ArrayTooSmall;
    return 0;
}

} // namespace

OSStatus CMSampleBufferCreate(CMBlockBufferRef dataBuffer, CMFormatDescriptionRef formatDescription,
                              std::int64_t numSamples, std::span<const CMSampleTimingInfo> timings,
                              std::span<const std::size_t> sizes, CMSampleBufferRef* out) {
    if (!out)
        return kCMSampleBufferError_RequiredParameterMissing;
    if (numSamples < 0 || !isEntryCount(timings.size(), numSamples) ||
        !isEntryCount(sizes.size(), numSamples))
        return kCMSampleBufferError_InvalidEntryCount;
    CMSampleBuffer::Fields fields;
    fields.dataBuffer = std::move(dataBuffer);
    fields.formatDescription = std::move(formatDescription);
    fields.numSamples = numSamples;
    fields.timings.assign(timings.begin(), timings.end());
    fields.sizes.assign(sizes.begin(), sizes.end());
    *out = std::make_shared<const CMSampleBuffer>(std::move(fields));
    return 0;
}

OSStatus CMSampleBufferCreateForImageBuffer(CVImageBufferRef imageBuffer,
                                            CMFormatDescriptionRef formatDescription,
                                            const CMSampleTimingInfo& timing, CMSampleBufferRef* out) {
    if (!imageBuffer || !formatDescription || !out)
        return kCMSampleBufferError_RequiredParameterMissing;
    if (formatDescription->mediaType != CMMediaType::video)
        return kCMSampleBufferError_InvalidMediaFormat;
    CMSampleBuffer::Fields fields;
    fields.imageBuffer = std::move(imageBuffer);
    fields.formatDescription = std::move(formatDescription);
    fields.numSamples = 1;
    fields.timings = {timing};
    *out = std::make_shared<const CMSampleBuffer>(std::move(fields));
    return 0;
}

CVImageBufferRef CMSampleBufferGetImageBuffer(const CMSampleBufferRef& buffer) {
    return buffer ? buffer->fields().imageBuffer : nullptr;
}

CMBlockBufferRef CMSampleBufferGetDataBuffer(const CMSampleBufferRef& buffer) {
    return buffer ? buffer->fields().dataBuffer : nullptr;
}

CMFormatDescriptionRef CMSampleBufferGetFormatDescription(const CMSampleBufferRef& buffer) {
    return buffer ? buffer->fields().formatDescription : nullptr;
}

std::int64_t CMSampleBufferGetNumSamples(const CMSampleBufferRef& buffer) {
    return buffer ? buffer->fields().numSamples : 0;
}

CMTime CMSampleBufferGetPresentationTimeStamp(const CMSampleBufferRef& buffer) {
    CMTime earliest = kCMTimeInvalid;
    if (!buffer)
        return earliest;
    // An invalid time is later than any other, so it only stays if there is none.
    for (const CMSampleTimingInfo& timing : buffer->fields().timings)
        earliest = CMTimeMinimum(earliest, timing.presentationTimeStamp);
    return earliest;
}

CMTime CMSampleBufferGetDuration(const CMSampleBufferRef& buffer) {
    if (!buffer || buffer->fields().timings.empty())
        return kCMTimeInvalid;
    const std::vector<CMSampleTimingInfo>& timings = buffer->fields().timings;
    const std::int64_t numSamples = buffer->fields().numSamples;
    if (timings.size() == 1) {
        const bool isCountable = numSamples <= std::numeric_limits<std::int32_t>::max();
        return isCountable ? CMTimeMultiply(timings.front().duration, static_cast<std::int32_t>(numSamples))
                           : kCMTimeInvalid;
    }
    CMTime sum = kCMTimeZero;
    for (const CMSampleTimingInfo& timing : timings)
        sum = CMTimeAdd(sum, timing.duration);
    return sum;
}

OSStatus CMSampleBufferGetSampleTimingInfoArray(const CMSampleBufferRef& buffer, std::size_t capacity,
                                                CMSampleTimingInfo* array, std::size_t* needed) {
    if (!buffer || (!array && !needed))
        return kCMSampleBufferError_RequiredParameterMissing;
    const std::vector<CMSampleTimingInfo>& timings = buffer->fields().timings;
    if (needed)
        *needed = timings.size();
    if (timings.empty())
        return kCMSampleBufferError_BufferHasNoSampleTimingInfo;
    if (!array)
        return 0;
    if (capacity < timings.size())
        return kCMSampleBufferError_ArrayTooSmall;
    std::copy(timings.begin(), timings.end(), array);
    return 0;
}

OSStatus CMSampleBufferGetAudioBufferListWithRetainedBlockBuffer(const CMSampleBufferRef& buffer,
                                                                 AudioBufferList* list,
                                                                 CMBlockBufferRef* blockBuffer) {
    if (list)
        *list = {};
    if (blockBuffer)
        blockBuffer->reset();
    if (!buffer || !list || !blockBuffer)
        return kCMSampleBufferError_RequiredParameterMissing;
    const CMSampleBuffer::Fields& fields = buffer->fields();
    if (const OSStatus failure = checkSound(fields))
        return failure;
    const std::span<std::byte> bytes = fields.dataBuffer->bytes();
    list->mNumberBuffers = 1;
    list->mBuffers[0] = {fields.formatDescription->audio.channelsPerFrame,
                         static_cast<std::uint32_t>(bytes.size()), bytes.data()};
    *blockBuffer = fields.dataBuffer;
    return 0;
}

} // namespace anadrome
