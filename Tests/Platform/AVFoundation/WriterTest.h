#pragma once

#include "Platform/AVFoundation/AVAssetWriter.h"
#include "Platform/AVFoundation/AVAssetWriterInputPixelBufferAdaptor.h"
#include "Platform/AVFoundation/AVAudioSettings.h"
#include "Platform/AVFoundation/AVVideoSettings.h"
#include "Tests/Platform/AVFoundation/MediaTest.h"

#include <future>

namespace anadrome {

inline Dictionary videoSettings(double width, double height) {
    return {{AVVideoCodecKey, AVVideoCodecTypeHEVC},
            {AVVideoWidthKey, width},
            {AVVideoHeightKey, height},
            {AVVideoCompressionPropertiesKey, Dictionary{{AVVideoAverageBitRateKey, 500000}}}};
}

/// A picture of 8 bits that is of one colour all over.
inline CVPixelBufferRef plainPicture(std::size_t width, std::size_t height, int luma, int cb = 128,
                                     int cr = 128) {
    CVPixelBufferRef pixels;
    CVPixelBufferCreate(width, height, kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange, {}, &pixels);
    CVPixelBufferLockBaseAddress(pixels, 0);
    auto* y = static_cast<std::uint8_t*>(CVPixelBufferGetBaseAddressOfPlane(pixels, 0));
    auto* c = static_cast<std::uint8_t*>(CVPixelBufferGetBaseAddressOfPlane(pixels, 1));
    std::fill_n(y, CVPixelBufferGetBytesPerRowOfPlane(pixels, 0) * height, static_cast<std::uint8_t>(luma));
    const std::size_t chromaBytes =
        CVPixelBufferGetBytesPerRowOfPlane(pixels, 1) * CVPixelBufferGetHeightOfPlane(pixels, 1);
    for (std::size_t i = 0; i < chromaBytes; ++i)
        c[i] = static_cast<std::uint8_t>(i % 2 == 0 ? cb : cr);
    CVPixelBufferUnlockBaseAddress(pixels, 0);
    return pixels;
}

/// A test that writes movies with one writer after another.
class WriterTest : public MediaTest {
protected:
    /// Makes the writer; the container follows from the name.
    void prepare(const std::string& name, Dictionary video = videoSettings(64, 64), bool withSound = false) {
        m_writer = *AVAssetWriter::assetWriterWithURL(URL::fileURLWithPath(path(name)),
                                                      name.ends_with(".mp4") ? AVFileTypeMPEG4
                                                                             : AVFileTypeQuickTimeMovie);
        m_video = std::make_shared<AVAssetWriterInput>(AVMediaTypeVideo, std::move(video));
        m_writer->addInput(m_video);
        if (withSound) {
            m_sound = std::make_shared<AVAssetWriterInput>(AVMediaTypeAudio,
                                                           Dictionary{{AVFormatIDKey, kAudioFormatMPEG4AAC},
                                                                      {AVSampleRateKey, 44100},
                                                                      {AVNumberOfChannelsKey, 2},
                                                                      {AVEncoderBitRateKey, 128000}});
            m_writer->addInput(m_sound);
        }
        m_adaptor = std::make_unique<AVAssetWriterInputPixelBufferAdaptor>(m_video, Dictionary{});
    }

    bool start(const CMTime& time = kCMTimeZero) {
        const bool started = m_writer->startWriting();
        if (started)
            m_writer->startSessionAtSourceTime(time);
        return started;
    }

    bool append(const CMTime& time, const CVPixelBufferRef& picture = plainPicture(64, 64, 100)) {
        return m_adaptor->appendPixelBuffer(picture, time);
    }

    /// A picture again and again, thirty a second.
    void appendMany(int count, const CVPixelBufferRef& picture = plainPicture(64, 64, 100)) {
        for (int i = 0; i < count; ++i)
            append(CMTimeMake(i, 30), picture);
    }

    AVAssetWriterStatus finish() {
        std::promise<void> done;
        m_writer->finishWritingWithCompletionHandler([&] { done.set_value(); });
        done.get_future().wait();
        return m_writer->status();
    }

    std::shared_ptr<AVAssetWriter> m_writer;
    std::shared_ptr<AVAssetWriterInput> m_video;
    std::shared_ptr<AVAssetWriterInput> m_sound;
    std::unique_ptr<AVAssetWriterInputPixelBufferAdaptor> m_adaptor;
};

} // namespace anadrome
