#include "Platform/UIKit/UISegmentedControl.h"

#include "Platform/Foundation/Print.h"

namespace anadrome {

void UISegmentedControl::requireSegment(long index) const {
    if (!hasSegment(index))
        fatalError("UISegmentedControl: there is no such segment");
}

void UISegmentedControl::setTitles(std::vector<std::string> titles) {
    setSelectedSegmentIndex(noSegment);
    change(m_titles, std::move(titles));
}

const std::string& UISegmentedControl::titleForSegmentAtIndex(long index) const {
    requireSegment(index);
    return m_titles[static_cast<std::size_t>(index)];
}

void UISegmentedControl::setTitle(std::string title, long index) {
    requireSegment(index);
    change(m_titles[static_cast<std::size_t>(index)], std::move(title));
}

void UISegmentedControl::setSelectedSegmentIndex(long index) {
    change(m_selected, hasSegment(index) ? index : noSegment);
}

void UISegmentedControl::tapSegment(long index) {
    if (index == m_selected || !hasSegment(index) || !acceptsTouches())
        return;
    setSelectedSegmentIndex(index);
    sendActionsForControlEvents(UIControlEvents::valueChanged);
}

} // namespace anadrome
