#include "Models/MovieRecipe.h"

#include <cmath>
#include <cstdio>
#include <ostream>

namespace anadrome {

namespace {

constexpr const char* errorDomain = "MovieRecipeError";

std::string stretch(const char* direction, double speed) {
    char text[48];
    std::snprintf(text, sizeof text, "%s %.1fx", direction, speed);
    return text;
}

} // namespace

Result<MovieRecipe> MovieRecipe::make(const Choices& choices) {
    for (const double speed : {choices.reverseSpeed, choices.normalSpeed})
        if (const std::string complaint = complaintAboutSpeed(speed); !complaint.empty())
            return NSError(errorDomain, 1, complaint);
    return MovieRecipe(choices, false);
}

MovieRecipe MovieRecipe::reversalOnly(AVFileType fileType) {
    Choices choices;
    choices.fileType = fileType;
    return {choices, true};
}

std::string MovieRecipe::complaintAboutSpeed(double speed) {
    const bool isInRange = speed > 0.05 && speed < 10.05;
    if (isInRange && std::abs(speed * 10 - std::round(speed * 10)) < 1e-6)
        return "";
    char number[32];
    std::snprintf(number, sizeof number, "%g", speed);
    return std::string("a speed goes from 0.1 to 10.0 in steps of 0.1, and ") + number + " doesn't";
}

std::ostream& operator<<(std::ostream& stream, const MovieRecipe& recipe) {
    const std::string reversed = stretch("reversed", recipe.reverseSpeed());
    const std::string forward = stretch("forward", recipe.normalSpeed());
    switch (recipe.outputType()) {
    case OutputType::reversed:
        stream << reversed;
        break;
    case OutputType::reversedThenForward:
        stream << reversed << ", then " << forward;
        break;
    case OutputType::forwardThenReversed:
        stream << forward << ", then " << reversed;
        break;
    }
    stream << "; " << fileExtension(recipe.fileType());
    if (recipe.keepsMetadata())
        stream << "; keeps metadata";
    if (recipe.isReversalOnly())
        stream << "; reversal only";
    return stream;
}

std::string fileExtension(AVFileType fileType) {
    return fileType == AVFileTypeMPEG4 ? ".mp4" : ".mov";
}

} // namespace anadrome
