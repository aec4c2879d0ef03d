#include "support/fake_presentation.h"

#include <algorithm>
#include <memory>

namespace varnhold::testing {

namespace {

class FakeItem final : public StatusItem {
public:
    explicit FakeItem(FakePresentation& owner) : owner_(owner) {}

    void setImage(const BarImage& image) override {
        owner_.image = image;
        owner_.record.emplace_back("image");
    }
    void setTitle(const std::string& title, const std::string& spoken) override {
        owner_.title = title;
        owner_.spoken = spoken;
        owner_.record.push_back("title " + title);
    }
    void setAttention(bool needed) override { owner_.attention = needed; }
    void setMenu(const std::vector<MenuRow>& rows) override {
        owner_.rows = rows;
        owner_.record.push_back("menu " + std::to_string(rows.size()));
    }

private:
    FakePresentation& owner_;
};

class FakeWindow final : public SettingsWindow {
public:
    explicit FakeWindow(FakePresentation& owner) : owner_(owner) {}

    void bringToFront() override {
        owner_.windowShown = true;
        owner_.record.emplace_back("window to front");
    }
    void close() override {
        owner_.windowShown = false;
        owner_.record.emplace_back("window closed");
    }
    void presentCustomGroups() override { ++owner_.sheetsPresented; }
    void presentAlert(const std::string& text) override { owner_.alerts.push_back(text); }

private:
    FakePresentation& owner_;
};

class FakePopover final : public NoticePopover {
public:
    explicit FakePopover(FakePresentation& owner) : owner_(owner) { ++owner_.openPopovers; }
    ~FakePopover() override { close(); }
    FakePopover(const FakePopover&) = delete;
    FakePopover& operator=(const FakePopover&) = delete;

    void close() override {
        if (open_) {
            open_ = false;
            --owner_.openPopovers;
            owner_.record.emplace_back("popover closed");
        }
    }

private:
    FakePresentation& owner_;
    bool open_ = true;
};

} // namespace

void FakePresentation::installMainMenu(const std::vector<MainMenu>& menus) {
    mainMenus = menus;
    record.emplace_back("main menu");
}

std::unique_ptr<StatusItem> FakePresentation::createStatusItem() {
    record.emplace_back("status item");
    return std::make_unique<FakeItem>(*this);
}

std::unique_ptr<SettingsWindow> FakePresentation::createSettingsWindow() {
    ++windowsMade;
    record.emplace_back("window made");
    return std::make_unique<FakeWindow>(*this);
}

std::unique_ptr<NoticePopover> FakePresentation::showNoticePopover(const NoticePanel& panel,
                                                                   const std::string& iconPath) {
    panels.push_back(panel);
    record.push_back("popover with icon " + iconPath);
    return std::make_unique<FakePopover>(*this);
}

void FakePresentation::setApplicationIcon(const std::string& path) {
    applicationIcon = path;
    record.push_back("icon " + path);
}

bool FakePresentation::isImage(const std::string& path) {
    return std::find(images.begin(), images.end(), path) != images.end();
}

void FakePresentation::setActivationPolicy(ActivationPolicy newPolicy) {
    policy = newPolicy;
    record.emplace_back(newPolicy == ActivationPolicy::regular ? "regular" : "accessory");
}

std::vector<std::string> FakePresentation::rowTitles() const {
    std::vector<std::string> titles;
    for (const MenuRow& row : rows) {
        titles.push_back(row.kind == MenuRow::Kind::separator ? "-" : row.title);
    }
    return titles;
}

} // namespace varnhold::testing
