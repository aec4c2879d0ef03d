#import <Cocoa/Cocoa.h>

#include "views/macos/native_status_item.h"

#include "views/macos/native_popover.h"
#include "views/macos/native_text.h"

// Draws the bars whenever and as sharply as a screen asks for them.
@interface VarnholdBars : NSImageRep {
@public
    varnhold::BarImage* image;
}
@end

@implementation VarnholdBars

- (BOOL)draw {
    for (const varnhold::BarRectangle& bar : image->bars) {
        [[NSColor colorWithCalibratedHue:bar.hue
                              saturation:varnhold::barSaturation
                              brightness:varnhold::barBrightness
                                   alpha:1] set];
        [[NSBezierPath bezierPathWithRoundedRect:NSMakeRect(bar.x, bar.y, bar.width, bar.height)
                                         xRadius:varnhold::barCornerRadius
                                         yRadius:varnhold::barCornerRadius] fill];
    }
    return YES;
}

- (id)copyWithZone:(NSZone*)zone {
    VarnholdBars* copy = [super copyWithZone:zone];
    copy->image = new varnhold::BarImage(*image);
    return copy;
}

- (void)dealloc {
    delete image;
    [super dealloc];
}

@end

namespace varnhold {

namespace {

class MenuListener {
public:
    virtual ~MenuListener() = default;
    virtual void chosen(MenuAction action, const std::string& value) = 0;
    virtual void opened() = 0;
    virtual void closed() = 0;
    virtual void atRest() = 0; // a turn later
};

} // namespace

} // namespace varnhold

// Passes on what a menu tells.
@interface VarnholdMenuTarget : NSObject {
@public
    varnhold::MenuListener* listener;
}
- (void)choose:(NSMenuItem*)item;
- (void)rest;
@end

@implementation VarnholdMenuTarget

- (void)choose:(NSMenuItem*)item {
    // Copies: what is chosen may end in a new menu.
    const auto action = static_cast<varnhold::MenuAction>([item tag]);
    const std::string value = [[item representedObject] UTF8String];
    listener->chosen(action, value);
}

- (void)menuWillOpen:(NSMenu*)menu {
    static_cast<void>(menu);
    listener->opened();
}

- (void)menuDidClose:(NSMenu*)menu {
    static_cast<void>(menu);
    listener->closed();
    [self performSelector:@selector(rest) withObject:nil afterDelay:0];
}

- (void)rest {
    listener->atRest();
}

@end

namespace varnhold {

namespace {

NSImage* imageOf(const BarImage& image) {
    const NSSize size = NSMakeSize(image.width, image.height);
    VarnholdBars* bars = [[[VarnholdBars alloc] init] autorelease];
    bars->image = new BarImage(image);
    [bars setSize:size];
    NSImage* made = [[[NSImage alloc] initWithSize:size] autorelease];
    [made addRepresentation:bars];
    [made setTemplate:NO]; // its colours are what it says
    return made;
}

NSMenuItem* itemOf(const MenuRow& row, id target) {
    if (row.kind == MenuRow::Kind::separator) {
        return [NSMenuItem separatorItem];
    }
    const bool acts = row.action != MenuAction::none;
    NSMenuItem* item =
        [[[NSMenuItem alloc] initWithTitle:nativeText(row.title)
                                    action:acts ? @selector(choose:) : static_cast<SEL>(nullptr)
                             keyEquivalent:nativeText(row.key)] autorelease];
    [item setTarget:target];
    [item setTag:static_cast<NSInteger>(row.action)];
    [item setRepresentedObject:nativeText(row.value)];
    [item setEnabled:acts ? YES : NO];
    if (row.red) {
        NSDictionary* red = [NSDictionary dictionaryWithObject:[NSColor systemRedColor]
                                                        forKey:NSForegroundColorAttributeName];
        [item setAttributedTitle:[[[NSAttributedString alloc] initWithString:nativeText(row.title)
                                                                  attributes:red] autorelease]];
    }
    return item;
}

NSMenu* menuOf(const std::vector<MenuRow>& rows, id target) {
    NSMenu* menu = [[[NSMenu alloc] initWithTitle:@"Varnhold"] autorelease];
    [menu setAutoenablesItems:NO];
    for (const MenuRow& row : rows) {
        [menu addItem:itemOf(row, target)];
    }
    [menu setDelegate:target];
    return menu;
}

} // namespace

struct NativeItemParts final : MenuListener {
    explicit NativeItemParts(NativeStatusItem::Choose wanted) : choose(std::move(wanted)) {
        target = [[VarnholdMenuTarget alloc] init];
        target->listener = this;
        item = [[[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength]
            retain];
        [item setBehavior:NSStatusItemBehaviorTerminationOnRemoval];
    }
    ~NativeItemParts() override {
        [NSObject cancelPreviousPerformRequestsWithTarget:target];
        [[item menu] setDelegate:nil];
        [[NSStatusBar systemStatusBar] removeStatusItem:item];
        [item release];
        [waiting release];
        [target release];
    }
    NativeItemParts(const NativeItemParts&) = delete;
    NativeItemParts& operator=(const NativeItemParts&) = delete;

    void setMenu(NSMenu* menu) {
        if (isOpen) {
            [waiting release];
            waiting = [menu retain];
        } else {
            [item setMenu:menu];
        }
    }

    void chosen(MenuAction action, const std::string& value) override { choose(action, value); }
    void opened() override { isOpen = true; }
    void closed() override { isOpen = false; }
    // Only now: the row that was chosen may be told of after the menu has closed.
    void atRest() override {
        if (waiting != nil && !isOpen) {
            [item setMenu:waiting];
            [waiting release];
            waiting = nil;
        }
    }

    NativeStatusItem::Choose choose;
    NSStatusItem* item = nil;
    VarnholdMenuTarget* target = nil;
    NSMenu* waiting = nil; // takes the open menu's place once that has closed
    bool isOpen = false;
};

NativeStatusItem::NativeStatusItem(Choose choose)
    : parts_(std::make_unique<NativeItemParts>(std::move(choose))) {}

NativeStatusItem::~NativeStatusItem() = default;

void NativeStatusItem::setImage(const BarImage& image) {
    [[parts_->item button] setImage:imageOf(image)];
}

void NativeStatusItem::setTitle(const std::string& title, const std::string& spoken) {
    NSStatusBarButton* button = [parts_->item button];
    [button setTitle:nativeText(title)];
    [button setImagePosition:NSImageLeft];
    [button setToolTip:nativeText(spoken)];
    [button setAccessibilityLabel:nativeText(spoken)];
}

void NativeStatusItem::setAttention(bool) {}

void NativeStatusItem::setMenu(const std::vector<MenuRow>& rows) {
    parts_->setMenu(menuOf(rows, parts_->target));
}

std::unique_ptr<NoticePopover> NativeStatusItem::showPopover(const NoticePanel& panel,
                                                             const std::string& iconPath) {
    return showNativePopover([parts_->item button], panel, iconPath);
}

} // namespace varnhold
