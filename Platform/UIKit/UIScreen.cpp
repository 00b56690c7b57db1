#include "Platform/UIKit/UIScreen.h"

namespace anadrome {

UIScreen& UIScreen::mainScreen() {
    static UIScreen instance;
    return instance;
}

} // namespace anadrome
