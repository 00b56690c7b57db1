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
    void declareConnections(UIConnections& connections) override;
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;

private:
    std::shared_ptr<SettingsViewController> self();
    UITableView& table() const;
    void doneTapped();
    void shareApp();
    void writeFeedback(long row);
    void tellThatMailFails();
    /// Shows an error dialog if no address is deployed.
    void openLink(const std::string& event, const std::string& address);

    std::weak_ptr<UITableView> m_tableView;
};

} // namespace anadrome
