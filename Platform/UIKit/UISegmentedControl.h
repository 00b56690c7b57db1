#pragma once

#include "Platform/UIKit/UIControl.h"

#include <string>
#include <vector>

namespace anadrome {

/// Chooses one of a few segments.
class UISegmentedControl : public UIControl {
public:
    /// The index that stands for none.
    static constexpr long noSegment = -1;

    explicit UISegmentedControl(std::vector<std::string> titles = {}) : m_titles(std::move(titles)) {}

    /// Segments with these titles take the place of all there are; none is selected.
    void setTitles(std::vector<std::string> titles);
    long numberOfSegments() const { return static_cast<long>(m_titles.size()); }
    /// A segment that doesn't exist is fatal.
    const std::string& titleForSegmentAtIndex(long index) const;
    void setTitle(std::string title, long index);

    long selectedSegmentIndex() const { return m_selected; }
    /// Sends no event. A segment that doesn't exist selects none.
    void setSelectedSegmentIndex(long index);

    /// The user's tap on a segment: value changed, if it wasn't selected.
    void tapSegment(long index);

private:
    bool hasSegment(long index) const { return index >= 0 && index < numberOfSegments(); }
    void requireSegment(long index) const;

    std::vector<std::string> m_titles;
    long m_selected = noSegment;
};

} // namespace anadrome
