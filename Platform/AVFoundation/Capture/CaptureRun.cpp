#include "Platform/AVFoundation/Capture/CaptureRun.h"

#include "Platform/AVFoundation/AVError.h"
#include "Platform/AVFoundation/Capture/DeviceInput.h"
#include "Platform/AVFoundation/Libav/ColorTags.h"
#include "Platform/AVFoundation/Libav/FrameConverter.h"
#include "Platform/AVFoundation/Libav/SoundReader.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/NSFileManager.h"

namespace anadrome::capture {

namespace {

constexpr OSType pixelFormat = kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange;

/// Cameras seldom tell; this is what they give, whatever the size.
constexpr libav::ColorTags cameraColour{AVCOL_PRI_BT709, AVCOL_TRC_BT709, AVCOL_SPC_SMPTE170M};

CMFormatDescriptionRef describePictures(double pictureRate) {
    CMFormatDescription description;
    description.mediaSubType = pixelFormat;
    description.extensions = libav::attachmentsFor(cameraColour);
    description.frameRateHint = pictureRate;
    return std::make_shared<const CMFormatDescription>(description);
}

ShownPicture shownPicture(const CMSampleBufferRef& picture) {
    const CVImageBufferRef pixels = CMSampleBufferGetImageBuffer(picture);
    const CGSize size{static_cast<CGFloat>(CVPixelBufferGetWidth(pixels)),
                      static_cast<CGFloat>(CVPixelBufferGetHeight(pixels))};
    return {pixels, CMSampleBufferGetPresentationTimeStamp(picture), size, CGAffineTransformIdentity};
}

} // namespace

template <typename Tell>
void CaptureRun::onMain(Tell tell) {
    DispatchQueue::main().async([self = shared_from_this(), tell = std::move(tell)] {
        if (!self->m_stop.stop_requested())
            tell(self->m_events);
    });
}

void CaptureRun::start() {
    const DispatchQueue threads = DispatchQueue::global(QualityOfService::userInteractive);
    threads.async([self = shared_from_this()] { self->readPictures(); });
    threads.async([self = shared_from_this()] { self->readSound(); });
}

void CaptureRun::stop() {
    m_stop.request_stop();
    m_relay->setSink(nullptr);
    const std::lock_guard lock(m_mutex);
    m_take.reset();
}

void CaptureRun::readPictures() {
    Result<DeviceInput> camera = DeviceInput::open(m_camera, m_stop.get_token());
    if (!camera)
        return end(camera.error());
    readPicturesFrom(*camera);
    end(camera->error().value_or(makeAVError(AVErrorDeviceWasDisconnected)));
}

void CaptureRun::readPicturesFrom(DeviceInput& camera) {
    const CMFormatDescriptionRef description = describePictures(camera.pictureRate());
    libav::FrameConverter converter(description, pixelFormat);
    const libav::Owned<AVFrame> frame = libav::makeFrame();
    bool isFirst = true;
    while (camera.next(frame.get())) {
        frame->colorspace = cameraColour.matrix;
        const CMSampleTimingInfo timing{kCMTimeInvalid, camera.time(*frame), kCMTimeInvalid};
        CMSampleBufferRef picture;
        CVPixelBufferRef pixels = converter.convert(*frame);
        av_frame_unref(frame.get());
        if (!pixels || !CMTIME_IS_NUMERIC(timing.presentationTimeStamp))
            continue;
        CMSampleBufferCreateForImageBuffer(std::move(pixels), description, timing, &picture);
        takePicture(picture);
        if (std::exchange(isFirst, false))
            onMain([](const auto& events) { events.started(); });
    }
}

void CaptureRun::takePicture(const CMSampleBufferRef& picture) {
    m_relay->show(shownPicture(picture));
    const std::shared_ptr<Take> current = take();
    if (current && !current->addPicture(picture))
        stopTake();
}

void CaptureRun::readSound() {
    for (const AVCaptureDevice& device : m_soundInputs)
        if (Result<DeviceInput> input = DeviceInput::open(device, m_stop.get_token())) {
            readSoundFrom(*input);
            break;
        }
    m_mayHaveSound = false;
}

void CaptureRun::readSoundFrom(DeviceInput& input) {
    libav::SoundReader reader;
    const libav::Owned<AVFrame> frame = libav::makeFrame();
    while (input.next(frame.get())) {
        reader.convert(input.time(*frame), *frame, [this](const CMSampleBufferRef& sound) {
            if (const std::shared_ptr<Take> current = take())
                current->addSound(sound);
            return true;
        });
        av_frame_unref(frame.get());
    }
}

void CaptureRun::end(const NSError& error) {
    {
        const std::lock_guard lock(m_mutex);
        m_hasEnded = true;
    }
    onMain([error](const auto& events) { events.ended(error); });
    stopTake();
}

std::shared_ptr<Take> CaptureRun::take() const {
    const std::lock_guard lock(m_mutex);
    return m_take;
}

void CaptureRun::startTake(const URL& file, AVFileType fileType) {
    bool canBegin = false;
    {
        const std::lock_guard lock(m_mutex);
        m_take = std::make_shared<Take>(file, fileType, m_mayHaveSound);
        canBegin = !m_hasEnded;
    }
    if (!canBegin)
        stopTake();
}

void CaptureRun::stopTake() {
    std::shared_ptr<Take> ended;
    {
        const std::lock_guard lock(m_mutex);
        ended = std::exchange(m_take, nullptr);
    }
    if (!ended)
        return;
    ended->finish([self = shared_from_this(), url = ended->url()](const std::optional<NSError>& error) {
        DispatchQueue::main().async([self, url, error] {
            if (!self->m_stop.stop_requested())
                self->m_events.recorded(url, error);
            else
                NSFileManager::defaultManager().removeItemAtPath(url.path());
        });
    });
}

CMTime CaptureRun::takeDuration() const {
    const std::shared_ptr<Take> current = take();
    return current ? current->duration() : kCMTimeZero;
}

} // namespace anadrome::capture
