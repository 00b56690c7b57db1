#pragma once

#include "Platform/UIKit/UITableViewCell.h"

#include <functional>
#include <map>

namespace anadrome {

class UITableView;

/// A row's place in a table.
struct NSIndexPath {
    long section = 0;
    long row = 0;

    friend auto operator<=>(const NSIndexPath&, const NSIndexPath&) = default;
};

/// Says what a table holds.
class UITableViewDataSource {
public:
    virtual ~UITableViewDataSource() = default;

    virtual long numberOfSectionsInTableView(UITableView& /*table*/) { return 1; }
    virtual long numberOfRowsInSection(UITableView& table, long section) = 0;
    virtual std::shared_ptr<UITableViewCell> cellForRowAtIndexPath(UITableView& table,
                                                                   const NSIndexPath& path) = 0;
};

/// Hears what the user does with a table.
class UITableViewDelegate {
public:
    virtual ~UITableViewDelegate() = default;

    virtual void didSelectRowAtIndexPath(UITableView& /*table*/, const NSIndexPath& /*path*/) {}
};

/// Rows in sections. It asks for all of them when it is told to reload: a table of this program fits the
/// screen.
class UITableView : public UIView {
public:
    /// Both are held weakly.
    void setDataSource(std::weak_ptr<UITableViewDataSource> source) { m_dataSource = std::move(source); }
    void setDelegate(std::weak_ptr<UITableViewDelegate> delegate) { m_delegate = std::move(delegate); }

    /// In points.
    CGFloat rowHeight() const { return m_rowHeight; }
    void setRowHeight(CGFloat height) { change(m_rowHeight, height); }

    /// Makes a kind of cell known, for the storyboard that the table comes from.
    void registerCell(const std::string& identifier, std::function<std::shared_ptr<UITableViewCell>()> make);
    /// A cell of that kind. An unknown identifier is fatal.
    std::shared_ptr<UITableViewCell> dequeueReusableCellWithIdentifier(const std::string& identifier,
                                                                       const NSIndexPath& path) const;

    /// Asks the data source for everything anew; nothing is selected afterwards.
    void reloadData();

    /// As they were at the last reload.
    const std::map<NSIndexPath, std::shared_ptr<UITableViewCell>>& cells() const { return m_cells; }

    void deselectRowAtIndexPath(const NSIndexPath& path, bool animated);

    /// The user's tap on a row, which stays selected until it is deselected. Without effect out of reach.
    void tapRow(const NSIndexPath& path);

private:
    std::weak_ptr<UITableViewDataSource> m_dataSource;
    std::weak_ptr<UITableViewDelegate> m_delegate;
    CGFloat m_rowHeight = 44;
    std::map<std::string, std::function<std::shared_ptr<UITableViewCell>()>> m_kinds;
    std::map<NSIndexPath, std::shared_ptr<UITableViewCell>> m_cells;
};

} // namespace anadrome
