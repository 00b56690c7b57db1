#include "Views/Edit/EditViewController.h"

#include "Models/VideoFileManager.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Platform/UIKit/UITapGestureRecognizer.h"
#include "Views/Common/ViewHelper.h"
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

void EditViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    if (!m_inputUrl)
        fatalError("The Edit screen was opened without a clip");
    setupViews();
    m_views->playerView->layer().setPlayer(m_player);
    loadPreviewPlayer(*m_inputUrl);
    loadInterstitial();
    updateBannerView();
}

void EditViewController::setupViews() {
    setupCaptions();
    const NSUserDefaults& preferences = NSUserDefaults::standardUserDefaults();
    m_views->exifSwitch->setOn(preferences.boolForKey("isSaveExifKey"));
    m_views->createButton->setTitle(NSLocalizedString("Create"), UIControlState::normal);
    for (const auto state : {UIControlState::normal, UIControlState::highlighted})
        m_views->videoSeekBar->setThumbImage(UIImage::systemImageNamed("circle.fill"), state);
    setNormalSpeedControlsEnabled(false);
    // Any value but 0 means MPEG-4, also one that no segment has.
    m_views->fileTypeSegmentedControl->setSelectedSegmentIndex(
        preferences.integerForKey("fileTypeIndexKey") == 0 ? 0 : 1);
    m_views->playerView->addGestureRecognizer(std::make_shared<UITapGestureRecognizer>([weak = weakSelf()] {
        if (const auto self = weak.lock())
            self->playerTap();
    }));
}

void EditViewController::setupCaptions() {
    m_views->outputTypeLabel->setText(NSLocalizedString("OutputTypeTitle"));
    m_views->outputTypeNoticeLabel->setText(NSLocalizedString("OutputTypeNotice"));
    const auto& outputType = m_views->outputTypeSegmentedControl;
    outputType->setTitle("◁", 0);
    outputType->setTitle("◁ → ▷", 1);
    outputType->setTitle("▷ → ◁", 2);
    updateOutputTypeValueLabel();
    m_views->reverseSpeedLabel->setText(NSLocalizedString("ReverseSpeed"));
    m_views->normalSpeedLabel->setText(NSLocalizedString("NormalSpeed"));
    m_views->exifLabel->setText(NSLocalizedString("ExifTitle"));
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
    setNormalSpeedControlsEnabled(m_views->outputTypeSegmentedControl->selectedSegmentIndex() != 0);
    updateOutputTypeValueLabel();
}

void EditViewController::updateOutputTypeValueLabel() {
    const auto& label = m_views->outputTypeValueLabel;
    switch (m_views->outputTypeSegmentedControl->selectedSegmentIndex()) {
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
    const auto& slider = m_views->normalSpeedSlider;
    slider->setEnabled(enabled);
    slider->setAlpha(alpha);
    slider->setNeedsLayout();
    slider->layoutIfNeeded();
    for (const auto& label : {m_views->normalSpeedLabel, m_views->normalSpeedValueLabel}) {
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
    updateSpeed(*m_views->reverseSpeedSlider, m_reverseSpeed, *m_views->reverseSpeedValueLabel);
}

void EditViewController::normalSpeedChanged() {
    updateSpeed(*m_views->normalSpeedSlider, m_normalSpeed, *m_views->normalSpeedValueLabel);
}

void EditViewController::speedSliderTouchUp() {
    applySpeedToPreview();
}

void EditViewController::fileTypeChanged() {
    // Read when it is needed, and stored when a movie is made.
}

void EditViewController::exifChanged() {
    NSUserDefaults::standardUserDefaults().setBool(m_views->exifSwitch->isOn(), "isSaveExifKey");
}

void EditViewController::createTap() {
    NSUserDefaults& preferences = NSUserDefaults::standardUserDefaults();
    preferences.setInteger(m_views->fileTypeSegmentedControl->selectedSegmentIndex(), "fileTypeIndexKey");
    preferences.synchronize();
    createVideo();
}

AVFileType EditViewController::chosenFileType() const {
    return m_views->fileTypeSegmentedControl->selectedSegmentIndex() == 0 ? AVFileTypeQuickTimeMovie
                                                                          : AVFileTypeMPEG4;
}

MovieRecipe EditViewController::chosenRecipe() const {
    const bool keepsMetadata = NSUserDefaults::standardUserDefaults().boolForKey("isSaveExifKey");
    const Result<MovieRecipe> recipe = MovieRecipe::make(
        {.outputType = static_cast<OutputType>(m_views->outputTypeSegmentedControl->selectedSegmentIndex()),
         .reverseSpeed = m_reverseSpeed,
         .normalSpeed = m_normalSpeed,
         .fileType = chosenFileType(),
         .metadata = keepsMetadata ? ClipMetadata::keep : ClipMetadata::drop});
    if (!recipe)
        fatalError("The Edit screen's controls allow no such movie: " + recipe.error().description());
    return *recipe;
}

} // namespace anadrome
