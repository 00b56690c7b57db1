#pragma once

#include "Platform/MessageUI/MFMailComposeViewController.h"
#include "Platform/UIKit/UITableView.h"

namespace anadrome {

/// A list of ways out: recommend the program, write to its makers, see their other pages. It holds no
/// settings. Main thread only.
class SettingsViewController : public UIViewController,
                               public UITableViewDataSource,
                               public UITableViewDelegate,
                               public MFMailComposeViewControllerDelegate {
public:
    /// Loads it first if need be.
    const std::shared_ptr<UITableView>& tableView() {
        view();
        return m_tableView;
    }

    // SettingsViewController+TableView.cpp
    long numberOfSectionsInTableView(UITableView& table) override;
    long numberOfRowsInSection(UITableView& table, long section) override;
    std::shared_ptr<UITableViewCell> cellForRowAtIndexPath(UITableView& table,
                                                           const NSIndexPath& path) override;
    void didSelectRowAtIndexPath(UITableView& table, const NSIndexPath& path) override;

    void mailComposeControllerDidFinishWithResult(MFMailComposeViewController& composer,
                                                  MFMailComposeResult result,
                                                  const std::optional<NSError>& error) override;

protected:
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;

private:
    friend void buildSettingsViews(SettingsViewController& settings, UIView& root);

    std::shared_ptr<SettingsViewController> self();
    void doneTapped();
    void shareApp();
    void writeFeedback(long row);
    void tellThatMailFails();
    /// Shows an error dialog if no address is deployed.
    void openLink(const std::string& event, const std::string& address);

    std::shared_ptr<UITableView> m_tableView;
};

} // namespace anadrome
