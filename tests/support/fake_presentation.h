#pragma once

#include <memory>
#include <string>
#include <vector>

#include "status/presentation.h"

namespace varnhold::testing {

// Shows nothing and remembers what it was asked to show. Events are sent by the test.
class FakePresentation final : public Presentation {
public:
    // Every call in words, in order: "status item", "image", "title  3/5", "menu 9", "icon /x.png".
    std::vector<std::string> record;

    PresentationEvents events;
    std::vector<MainMenu> mainMenus;
    BarImage image;
    std::string title;
    std::string spoken;
    bool attention = false;
    std::vector<MenuRow> rows;
    std::vector<NoticePanel> panels; // all that were ever shown
    int openPopovers = 0;
    int windowsMade = 0;
    bool windowShown = false;
    int sheetsPresented = 0;
    std::vector<std::string> alerts;
    ActivationPolicy policy = ActivationPolicy::accessory;
    bool terminated = false;
    std::vector<std::string> images; // paths that can be loaded as images
    std::string applicationIcon;

    void connect(PresentationEvents newEvents) override { events = std::move(newEvents); }
    void installMainMenu(const std::vector<MainMenu>& menus) override;
    std::unique_ptr<StatusItem> createStatusItem() override;
    std::unique_ptr<SettingsWindow> createSettingsWindow() override;
    std::unique_ptr<NoticePopover> showNoticePopover(const NoticePanel& panel,
                                                     const std::string& iconPath) override;
    void setApplicationIcon(const std::string& path) override;
    bool isImage(const std::string& path) override;
    void setActivationPolicy(ActivationPolicy newPolicy) override;
    void activate() override { record.emplace_back("activate"); }
    void terminate() override { terminated = true; }

    // Titles of the rows, with "-" for a separator.
    [[nodiscard]] std::vector<std::string> rowTitles() const;
};

} // namespace varnhold::testing
