#include "Views/Edit/EditViewController.h"

#include "Models/VideoFileManager.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UIConnections.h"
#include "Platform/UIKit/UIImageView.h"
#include "Platform/UIKit/UILabel.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Platform/UIKit/UISegmentedControl.h"
#include "Platform/UIKit/UISlider.h"
#include "Platform/UIKit/UISwitch.h"
#include "Platform/UIKit/UITapGestureRecognizer.h"
#include "Views/Common/ViewHelper.h"
#include "Views/Edit/PlayerView.h"
#include "Views/Edit/SpeedCurve.h"

namespace anadrome {

EditViewController::EditViewController()
    : m_videoEncoder(std::make_unique<VideoEncoder>(&ViewHelper::updateProgress)) {}

EditViewController::~EditViewController() {
    leaveJob();
    // An ad that is late holds a screen that was left long ago; by then the files are another clip's.
    if (!m_hasLeftStack)
        VideoFileManager::removeAllWorkFiles();
    removeTimeObserver();
}

void EditViewController::didMoveToParentViewController(const std::shared_ptr<UIViewController>& parent) {
    m_hasLeftStack = !parent;
    if (m_hasLeftStack) {
        leaveJob();
        VideoFileManager::removeAllWorkFiles();
    }
}

std::shared_ptr<EditViewController> EditViewController::self() {
    return std::static_pointer_cast<EditViewController>(shared_from_this());
}

void EditViewController::declareConnections(UIConnections& connections) {
    connections.outlet("playerView", m_playerView);
    connections.outlet("playPauseButtonImageView", m_playPauseButtonImageView);
    connections.outlet("videoSeekBar", m_videoSeekBar);
    connections.outlet("outputTypeLabel", m_outputTypeLabel);
    connections.outlet("outputTypeNoticeLabel", m_outputTypeNoticeLabel);
    connections.outlet("outputTypeSegmentedControl", m_outputTypeSegmentedControl);
    connections.outlet("outputTypeValueLabel", m_outputTypeValueLabel);
    connections.outlet("reverseSpeedLabel", m_reverseSpeedLabel);
    connections.outlet("reverseSpeedValueLabel", m_reverseSpeedValueLabel);
    connections.outlet("reverseSpeedSlider", m_reverseSpeedSlider);
    connections.outlet("normalSpeedLabel", m_normalSpeedLabel);
    connections.outlet("normalSpeedValueLabel", m_normalSpeedValueLabel);
    connections.outlet("normalSpeedSlider", m_normalSpeedSlider);
    connections.outlet("fileTypeSegmentedControl", m_fileTypeSegmentedControl);
    connections.outlet("exifLabel", m_exifLabel);
    connections.outlet("exifSwitch", m_exifSwitch);
    connections.outlet("createButton", m_createButton);
    connections.outlet("createButtonBottomConstraint", m_createButtonBottomConstraint);
    connections.action("outputTypeChanged", [this] { outputTypeChanged(); });
    connections.action("seekBarChanged", [this] { seekBarChanged(); });
    connections.action("reverseSpeedChanged", [this] { reverseSpeedChanged(); });
    connections.action("normalSpeedChanged", [this] { normalSpeedChanged(); });
    connections.action("speedSliderTouchUp", [this] { speedSliderTouchUp(); });
    connections.action("fileTypeChanged", [this] { fileTypeChanged(); });
    connections.action("exifChanged", [this] { exifChanged(); });
    connections.action("createTap", [this] { createTap(); });
}

void EditViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    if (!m_inputUrl)
        fatalError("The Edit screen was opened without a clip");
    setupViews();
    m_playerView.lock()->layer().setPlayer(m_player);
    loadPreviewPlayer(*m_inputUrl);
    loadInterstitial();
    updateBannerView();
}

void EditViewController::setupViews() {
    setupCaptions();
    const NSUserDefaults& preferences = NSUserDefaults::standardUserDefaults();
    m_exifSwitch.lock()->setOn(preferences.boolForKey("isSaveExifKey"));
    m_createButton.lock()->setTitle(NSLocalizedString("Create"), UIControlState::normal);
    for (const auto state : {UIControlState::normal, UIControlState::highlighted})
        m_videoSeekBar.lock()->setThumbImage(UIImage::systemImageNamed("circle.fill"), state);
    setNormalSpeedControlsEnabled(false);
    // Any value but 0 means MPEG-4, also one that no segment has.
    m_fileTypeSegmentedControl.lock()->setSelectedSegmentIndex(
        preferences.integerForKey("fileTypeIndexKey") == 0 ? 0 : 1);
    m_playerView.lock()->addGestureRecognizer(std::make_shared<UITapGestureRecognizer>([weak = weakSelf()] {
        if (const auto self = weak.lock())
            self->playerTap();
    }));
}

void EditViewController::setupCaptions() {
    m_outputTypeLabel.lock()->setText(NSLocalizedString("OutputTypeTitle"));
    m_outputTypeNoticeLabel.lock()->setText(NSLocalizedString("OutputTypeNotice"));
    const auto outputType = m_outputTypeSegmentedControl.lock();
    outputType->setTitle("◁", 0);
    outputType->setTitle("◁ → ▷", 1);
    outputType->setTitle("▷ → ◁", 2);
    updateOutputTypeValueLabel();
    m_reverseSpeedLabel.lock()->setText(NSLocalizedString("ReverseSpeed"));
    m_normalSpeedLabel.lock()->setText(NSLocalizedString("NormalSpeed"));
    m_exifLabel.lock()->setText(NSLocalizedString("ExifTitle"));
}

void EditViewController::viewWillAppear(bool animated) {
    UIViewController::viewWillAppear(animated);
    // A swipe over the sliders and the seek bar must not leave the screen.
    if (const auto stack = navigationController())
        stack->interactivePopGestureRecognizer()->setEnabled(false);
    if (m_player->currentItem())
        addTimeObserver();
}

void EditViewController::viewWillDisappear(bool animated) {
    m_player->pause();
    removeTimeObserver();
    if (const auto stack = navigationController())
        stack->interactivePopGestureRecognizer()->setEnabled(true);
    UIViewController::viewWillDisappear(animated);
}

void EditViewController::outputTypeChanged() {
    setNormalSpeedControlsEnabled(m_outputTypeSegmentedControl.lock()->selectedSegmentIndex() != 0);
    updateOutputTypeValueLabel();
}

void EditViewController::updateOutputTypeValueLabel() {
    const auto label = m_outputTypeValueLabel.lock();
    switch (m_outputTypeSegmentedControl.lock()->selectedSegmentIndex()) {
    case 0:
        return label->setText(NSLocalizedString("OutputReverseOnly"));
    case 1:
        return label->setText(NSLocalizedString("OutputReverseNormal"));
    case 2:
        return label->setText(NSLocalizedString("OutputNormalReverse"));
    default:
        fatalError("There is no such output type");
    }
}

void EditViewController::setNormalSpeedControlsEnabled(bool enabled) {
    const double alpha = enabled ? 1.0 : 0.3;
    const auto slider = m_normalSpeedSlider.lock();
    slider->setEnabled(enabled);
    slider->setAlpha(alpha);
    slider->setNeedsLayout();
    slider->layoutIfNeeded();
    for (const auto& label : {m_normalSpeedLabel.lock(), m_normalSpeedValueLabel.lock()}) {
        label->setEnabled(enabled);
        label->setAlpha(alpha);
    }
}

void EditViewController::updateSpeed(const UISlider& slider, double& field, UILabel& label) {
    field = speedAtPosition(slider.value());
    const auto tenths = static_cast<int>(std::lround(field * 10));
    label.setText(std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + 'x');
}

void EditViewController::reverseSpeedChanged() {
    updateSpeed(*m_reverseSpeedSlider.lock(), m_reverseSpeed, *m_reverseSpeedValueLabel.lock());
}

void EditViewController::normalSpeedChanged() {
    updateSpeed(*m_normalSpeedSlider.lock(), m_normalSpeed, *m_normalSpeedValueLabel.lock());
}

void EditViewController::speedSliderTouchUp() {
    applySpeedToPreview();
}

void EditViewController::fileTypeChanged() {
    // Read when it is needed, and stored when a movie is made.
}

void EditViewController::exifChanged() {
    NSUserDefaults::standardUserDefaults().setBool(m_exifSwitch.lock()->isOn(), "isSaveExifKey");
}

void EditViewController::createTap() {
    NSUserDefaults& preferences = NSUserDefaults::standardUserDefaults();
    preferences.setInteger(m_fileTypeSegmentedControl.lock()->selectedSegmentIndex(), "fileTypeIndexKey");
    preferences.synchronize();
    createVideo();
}

AVFileType EditViewController::chosenFileType() const {
    return m_fileTypeSegmentedControl.lock()->selectedSegmentIndex() == 0 ? AVFileTypeQuickTimeMovie
                                                                          : AVFileTypeMPEG4;
}

MovieRecipe EditViewController::chosenRecipe() const {
    const bool keepsMetadata = NSUserDefaults::standardUserDefaults().boolForKey("isSaveExifKey");
    const Result<MovieRecipe> recipe = MovieRecipe::make(
        {.outputType = static_cast<OutputType>(m_outputTypeSegmentedControl.lock()->selectedSegmentIndex()),
         .reverseSpeed = m_reverseSpeed,
         .normalSpeed = m_normalSpeed,
         .fileType = chosenFileType(),
         .metadata = keepsMetadata ? ClipMetadata::keep : ClipMetadata::drop});
    if (!recipe)
        fatalError("The Edit screen's controls allow no such movie: " + recipe.error().description());
    return *recipe;
}

} // namespace anadrome
