#include "views/macos/native_popover.h"

#include "views/macos/native_text.h"
#include "views/macos/popover_layout.h"

// Counts from its upper edge, as the layout does.
@interface VarnholdNoticeView : NSView
@end

@implementation VarnholdNoticeView

- (BOOL)isFlipped {
    return YES;
}

@end

namespace varnhold {

namespace {

using Kind = PopoverText::Kind;

NSRect rectOf(const PopoverRectangle& place) {
    return NSMakeRect(place.x, place.y, place.width, place.height);
}

NSFont* fontOf(Kind kind) {
    const CGFloat size = fontSizeOf(kind);
    return kind == Kind::title ? [NSFont systemFontOfSize:size weight:NSFontWeightSemibold]
                               : [NSFont systemFontOfSize:size];
}

NSTextField* labelOf(Kind kind, const std::string& text) {
    NSTextField* label = [[[NSTextField alloc] initWithFrame:NSZeroRect] autorelease];
    [label setStringValue:nativeText(text)];
    [label setFont:fontOf(kind)];
    [label setTextColor:kind == Kind::warning ? [NSColor systemOrangeColor] : [NSColor labelColor]];
    [label setEditable:NO];
    [label setSelectable:NO];
    [label setBordered:NO];
    [label setBezeled:NO];
    [label setDrawsBackground:NO];
    [[label cell] setWraps:YES];
    [[label cell] setLineBreakMode:NSLineBreakByWordWrapping];
    return label;
}

double heightOf(Kind kind, const std::string& text, double width) {
    constexpr CGFloat endless = 100000;
    const NSRect room = NSMakeRect(0, 0, width, endless);
    return [[labelOf(kind, text) cell] cellSizeForBounds:room].height;
}

NSImage* iconAt(const std::string& path) {
    if (path.empty()) {
        return [NSApp applicationIconImage];
    }
    return [[[NSImage alloc] initWithContentsOfFile:nativeText(path)] autorelease];
}

NSView* contentOf(const PopoverLayout& layout, NSImage* icon) {
    VarnholdNoticeView* content = [[[VarnholdNoticeView alloc]
        initWithFrame:NSMakeRect(0, 0, layout.width, layout.height)] autorelease];
    if (icon != nil) {
        NSImageView* picture =
            [[[NSImageView alloc] initWithFrame:rectOf(layout.icon)] autorelease];
        [picture setImageScaling:NSImageScaleProportionallyUpOrDown];
        [picture setImage:icon];
        [content addSubview:picture];
    }
    for (const PopoverText& text : layout.texts) {
        NSTextField* label = labelOf(text.kind, text.text);
        [label setFrame:rectOf(text.place)];
        [content addSubview:label];
    }
    return content;
}

class NativePopover final : public NoticePopover {
public:
    explicit NativePopover(NSPopover* popover) : popover_([popover retain]) {}
    ~NativePopover() override {
        close();
        [popover_ release];
    }
    NativePopover(const NativePopover&) = delete;
    NativePopover& operator=(const NativePopover&) = delete;

    void close() override { [popover_ close]; }

private:
    NSPopover* popover_;
};

} // namespace

std::unique_ptr<NoticePopover> showNativePopover(NSView* anchor, const NoticePanel& panel,
                                                 const std::string& iconPath) {
    NSImage* icon = iconAt(iconPath);
    const PopoverLayout layout = popoverLayout(panel, icon != nil, heightOf);
    NSViewController* controller = [[[NSViewController alloc] initWithNibName:nil
                                                                       bundle:nil] autorelease];
    [controller setView:contentOf(layout, icon)];
    NSPopover* popover = [[[NSPopover alloc] init] autorelease];
    [popover setBehavior:NSPopoverBehaviorTransient];
    [popover setContentViewController:controller];
    [popover setContentSize:NSMakeSize(layout.width, layout.height)];
    [popover showRelativeToRect:[anchor bounds] ofView:anchor preferredEdge:NSMinYEdge];
    return std::make_unique<NativePopover>(popover);
}

} // namespace varnhold
