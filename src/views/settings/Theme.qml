pragma Singleton
import QtQuick
import Varnhold

// The colours, fonts and common measures of the window, for light and for dark, with and without strong
// contrast, as the desktop is at the moment. What other windows have too comes from ThemeTones.
QtObject {
    id: theme

    readonly property SystemPalette system: SystemPalette {}
    readonly property bool dark: ThemeTones.isDark(system.window)
    readonly property bool strong: ThemeTones.isStrong(system.window, system.windowText)

    // Grounds
    readonly property color window: ThemeTones.window(dark, strong)
    readonly property color pane: pick("#ebebee", "#1f1f22", window, window)
    readonly property color card: pick("#ffffff", "#2f2f33", window, window)
    readonly property color fieldBackground: ThemeTones.field(dark, strong)
    readonly property color raised: pick("#ffffff", "#35353a", window, window) // menus, sheets, tool tips
    readonly property color control: pick("#ffffff", "#3d3d42", window, window) // what can be pressed
    readonly property color trough: faded(text, dark ? 0.10 : 0.07) // what a chosen segment lies in

    // Text and lines
    readonly property color text: ThemeTones.text(dark, strong)
    readonly property color secondaryText: ThemeTones.secondaryText(dark, strong)
    readonly property color modelText: "#ffffff"
    readonly property color modelTag: faded(modelText, strong ? 1 : 0.8)
    readonly property color separator: faded(text, strong ? 0.6 : dark ? 0.14 : 0.12)
    readonly property color fieldStroke: line(text, dark ? 0.24 : 0.22)
    readonly property color editorStroke: line(secondaryText, 0.3)
    readonly property color focusRing: pick("#2f7de1", "#4c9bff", "#00429e", "#9cc6ff")
    readonly property int ringWidth: strong ? 3 : 2
    readonly property int edgeWidth: strong ? 1 : 0 // of what else is told from its ground by a tint
    readonly property real disabled: strong ? 0.55 : 0.3 // opacity
    readonly property color hover: faded(text, 0.06)
    readonly property color pressed: faded(text, 0.12)
    readonly property color dim: faded("#000000", dark ? 0.5 : 0.32)
    readonly property color shade: faded("#000000", strong ? 0 : 0.05) // over the window's ground
    readonly property color shadow: faded("#000000", strong ? 0 : dark ? 0.45 : 0.17)

    // The accent is a ground, the others are colours of text and signs.
    readonly property color accent: ThemeTones.accent(dark, strong)
    readonly property color accentText: ThemeTones.accentText(dark, strong)
    readonly property color blue: pick("#0852b8", "#72b2ff", "#00429e", "#9cc6ff")
    readonly property color green: pick("#176b2e", "#4fc46a", "#094f1c", "#6fdc87")
    readonly property color orange: ThemeTones.orange(dark, strong)
    readonly property color red: ThemeTones.red(dark, strong)
    readonly property color gray: pick("#77777d", "#98989f", "#54545a", "#b4b4bb")
    readonly property color teal: pick("#09666f", "#4fc3cf", "#004d54", "#6bd9e4")
    readonly property color yellow: pick("#765300", "#ffd84d", "#5e4200", "#ffe06a")
    readonly property color slackPurple: pick("#660099", "#c79bf2", "#5c0090", "#dcbcff")

    // Measures, in points: corners, and from the least to the greatest, room between and around things
    readonly property int chipRadius: 5
    readonly property int radius: 6
    readonly property int zoneRadius: 8
    readonly property int cardRadius: 10
    readonly property int fine: 2
    readonly property int slim: 3
    readonly property int tight: 4
    readonly property int close: 5
    readonly property int gap: 6
    readonly property int loose: 7
    readonly property int pad: 8
    readonly property int wide: 12
    readonly property int broad: 14
    readonly property int ample: 16
    readonly property int roomy: 20
    readonly property int vast: 24
    readonly property int hair: 1
    readonly property int dot: 7 // across
    readonly property int signSize: 16 // of signs that stand by themselves
    readonly property int largeSignSize: 18
    readonly property int emblemSize: 44
    readonly property int fieldHeight: 24
    readonly property int edge: 12 // of a pane, around what stands on it
    readonly property int gutter: edge // where a scroll bar runs: in the margin beside what it scrolls
    readonly property int quick: 120 // ms
    readonly property int calm: 200
    readonly property int comeBack: 150 // of what was dragged
    readonly property int tipDelay: 600

    // Sizes of letters, and of the signs that stand beside them.
    readonly property int zoneSize: 9
    readonly property int tinySize: 10
    readonly property int smallSize: 11
    readonly property int labelSize: 12
    readonly property int bodySize: 13
    readonly property int largeSize: 14
    readonly property int titleSize: 15

    readonly property string textFamily: MarkedText.textFamily()
    readonly property string monospace: MarkedText.codeFamily()
    readonly property font zone: font(zoneSize, Font.Bold, 1)
    readonly property font tiny: font(tinySize, Font.Normal)
    readonly property font small: font(smallSize, Font.Normal)
    readonly property font smallLight: font(smallSize, Font.Light)
    readonly property font smallMedium: font(smallSize, Font.Medium)
    readonly property font smallStrong: font(smallSize, Font.DemiBold)
    readonly property font smallBold: font(smallSize, Font.Bold)
    readonly property font label: font(labelSize, Font.Normal)
    readonly property font labelLight: font(labelSize, Font.Light)
    readonly property font labelMedium: font(labelSize, Font.Medium)
    readonly property font labelStrong: font(labelSize, Font.DemiBold)
    readonly property font labelBold: font(labelSize, Font.Bold)
    readonly property font body: font(bodySize, Font.Normal)
    readonly property font bodyMedium: font(bodySize, Font.Medium)
    readonly property font headline: font(bodySize, Font.DemiBold)
    readonly property font large: font(largeSize, Font.Normal)
    readonly property font largeStrong: font(largeSize, Font.DemiBold)
    readonly property font largeBold: font(largeSize, Font.Bold)
    readonly property font title3: font(titleSize, Font.DemiBold)
    readonly property font blockTitle: font(titleSize, Font.Bold)
    readonly property font title: font(20, Font.Bold)
    readonly property font emblem: font(40, Font.Normal)
    readonly property font caption: font(smallSize, Font.DemiBold)

    function font(size: real, weight: int, tracking: real): font {
        return Qt.font({
            family: textFamily, pixelSize: size, weight: weight, letterSpacing: tracking ? tracking : 0
        });
    }

    function pick(light: var, dark: var, strongLight: var, strongDark: var): color {
        return strong ? (theme.dark ? strongDark : strongLight) : theme.dark ? dark : light;
    }

    // Colours out of data and tables come as words.
    function colorOf(value: var): color {
        return typeof value === "string" ? Qt.color(value) : value;
    }

    function faded(value: var, opacity: real): color {
        const c = colorOf(value);
        return Qt.rgba(c.r, c.g, c.b, c.a * opacity);
    }

    // What is seen where a colour lies on an opaque ground.
    function over(value: var, ground: var): color {
        const c = colorOf(value), g = colorOf(ground);
        const mix = (top, below) => top * c.a + below * (1 - c.a);
        return Qt.rgba(mix(c.r, g.r), mix(c.g, g.g), mix(c.b, g.b), 1);
    }

    // Of a frame or an edge: a strong contrast leaves none faint.
    function line(value: var, opacity: real): color {
        return strong ? readable(value, card) : faded(value, opacity);
    }

    // The colour itself, or the nearest on the way to black or white that can be read on the ground.
    function readable(value: var, ground: var): color {
        return ThemeTones.readable(colorOf(value), colorOf(ground), strong);
    }

    // The colour as a ground on which the accent's text can be read.
    function filled(value: var): color {
        return readable(over(value, accentText), accentText);
    }

    // A section's light tint, or its dark sister. A strong contrast has it around the ground instead.
    function chainGround(tint: var): color {
        return strong ? card : dark ? sister(tint, 0.20, 0.20) : colorOf(tint);
    }

    function pastelGround(value: var, opacity: real): color {
        return strong ? card : over(faded(dark ? sister(value, 0.24, 0.26) : value, opacity), card);
    }

    function groundEdge(tint: var): color {
        return strong ? readable(sister(tint, 0.8, dark ? 0.75 : 0.3), card) : "transparent";
    }

    // Of the same hue.
    function sister(value: var, saturation: real, lightness: real): color {
        const hue = colorOf(value).hslHue; // none of a gray
        return Qt.hsla(Math.max(hue, 0), hue < 0 ? 0 : saturation, lightness, 1);
    }

    // The ground of a model's row, by the name of its colour.
    function modelGround(name: string): color {
        return ThemeTones.modelGround(name, dark, strong);
    }

    // Signs by the names that the record has for them, and the files that show them.
    readonly property var symbols: ({
        "bolt.fill": "lightning-fill", "bolt.slash": "lightning-slash",
        "book.closed.fill": "book-fill", "key.fill": "key-fill", "doc.fill": "file-fill",
        "folder.fill": "folder-fill", "books.vertical.fill": "books-fill",
        "creditcard.fill": "credit-card-fill", "plus.circle.fill": "plus-circle-fill",
        "play.fill": "play-fill", "pause.fill": "pause-fill", "stop.fill": "stop-fill",
        "lightbulb.fill": "lightbulb-fill", "ellipsis.circle": "dots-three-circle",
        "checkmark": "check-bold", "plus": "plus-bold", "arrow.clockwise": "arrow-clockwise",
        "arrow.clockwise.circle.fill": "arrow-clockwise-circle-fill"
    })

    function symbol(platformName: string): string {
        return symbols[platformName] ?? platformName;
    }
}
