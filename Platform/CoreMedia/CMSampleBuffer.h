#pragma once

#include "Platform/CoreMedia/CMBlockBuffer.h"
#include "Platform/CoreMedia/CMFormatDescription.h"
#include "Platform/CoreMedia/CMTime.h"
#include "Platform/CoreVideo/CVPixelBuffer.h"

#include <memory>
#include <span>
#include <vector>

namespace anadrome {

enum CMSampleBufferStatus : OSStatus {
    kCMSampleBufferError_RequiredParameterMissing = -12731,
    kCMSampleBufferError_BufferNotReady = -12733,
    kCMSampleBufferError_SampleIndexOutOfRange = -12734,
    kCMSampleBufferError_BufferHasNoSampleTimingInfo = -12736,
    kCMSampleBufferError_ArrayTooSmall = -12737,
    kCMSampleBufferError_InvalidEntryCount = -12738,
    kCMSampleBufferError_InvalidMediaFormat = -12743,
};

/// Every time is invalid when made plainly.
struct CMSampleTimingInfo {
    CMTime duration;
    CMTime presentationTimeStamp;
    CMTime decodeTimeStamp;
};

struct AudioBuffer {
    std::uint32_t mNumberChannels = 0;
    std::uint32_t mDataByteSize = 0;
    void* mData = nullptr;
};

/// Room for one buffer: interleaved sound.
struct AudioBufferList {
    std::uint32_t mNumberBuffers = 0;
    AudioBuffer mBuffers[1];
};

/// Samples of one track with their times: either one picture, or bytes in a block buffer. Immutable itself,
/// while the buffers that it holds are shared and can change. Make it with the CMSampleBufferCreate…
/// functions.
class CMSampleBuffer {
public:
    struct Fields {
        CMBlockBufferRef dataBuffer;
        CVImageBufferRef imageBuffer;
        CMFormatDescriptionRef formatDescription;
        std::int64_t numSamples = 0;
        /// None, one for all samples, or one each.
        std::vector<CMSampleTimingInfo> timings;
        std::vector<std::size_t> sizes;
    };
    explicit CMSampleBuffer(Fields fields) : m_fields(std::move(fields)) {}
    const Fields& fields() const { return m_fields; }

private:
    Fields m_fields;
};

using CMSampleBufferRef = std::shared_ptr<const CMSampleBuffer>;

/// Timing and size entries must be 0, 1 or as many as the samples (else InvalidEntryCount). One timing entry
/// for many samples lays them end to end. *out is untouched on failure.
OSStatus CMSampleBufferCreate(CMBlockBufferRef dataBuffer, CMFormatDescriptionRef formatDescription,
                              std::int64_t numSamples, std::span<const CMSampleTimingInfo> timings,
                              std::span<const std::size_t> sizes, CMSampleBufferRef* out);

/// One picture with one timing entry. The description may be that of the track which the picture was decoded
/// from; one of sound is InvalidMediaFormat.
OSStatus CMSampleBufferCreateForImageBuffer(CVImageBufferRef imageBuffer,
                                            CMFormatDescriptionRef formatDescription,
                                            const CMSampleTimingInfo& timing, CMSampleBufferRef* out);

CVImageBufferRef CMSampleBufferGetImageBuffer(const CMSampleBufferRef& buffer);
CMBlockBufferRef CMSampleBufferGetDataBuffer(const CMSampleBufferRef& buffer);
CMFormatDescriptionRef CMSampleBufferGetFormatDescription(const CMSampleBufferRef& buffer);
std::int64_t CMSampleBufferGetNumSamples(const CMSampleBufferRef& buffer);
/// The numerically earliest time of its samples; invalid if it has no timing.
CMTime CMSampleBufferGetPresentationTimeStamp(const CMSampleBufferRef& buffer);
/// The sum of its samples' durations; invalid if one of them is.
CMTime CMSampleBufferGetDuration(const CMSampleBufferRef& buffer);

/// Writes the timing entries. With a capacity below what is needed it writes nothing, sets *needed (if given)
/// and returns ArrayTooSmall; with a null array it sets *needed alone and returns 0.
OSStatus CMSampleBufferGetSampleTimingInfoArray(const CMSampleBufferRef& buffer, std::size_t capacity,
                                                CMSampleTimingInfo* array, std::size_t* needed);

/// Fills the list with where the sound's bytes lie and hands out the block buffer that holds them, 16-byte
/// aligned. On failure the list is empty and the block buffer null.
OSStatus CMSampleBufferGetAudioBufferListWithRetainedBlockBuffer(const CMSampleBufferRef& buffer,
                                                                 AudioBufferList* list,
                                                                 CMBlockBufferRef* blockBuffer);

} // namespace anadrome
