pragma Singleton
import QtQuick
import Varnhold

// Every colour, font and measure of the window, for light and for dark as the desktop is at the moment.
QtObject {
    id: theme

    readonly property SystemPalette system: SystemPalette {}
    readonly property bool dark: luminance(system.window) < 0.18

    // Grounds
    readonly property color window: dark ? "#262629" : "#f6f6f8"
    readonly property color pane: dark ? "#1f1f22" : "#ebebee"
    readonly property color card: dark ? "#2f2f33" : "#ffffff"
    readonly property color fieldBackground: dark ? "#1b1b1d" : "#ffffff"
    readonly property color raised: dark ? "#35353a" : "#ffffff" // menus, sheets, tool tips
    readonly property color control: dark ? "#3d3d42" : "#ffffff" // what can be pressed
    readonly property color trough: faded(text, dark ? 0.10 : 0.07) // what a chosen segment lies in

    // Text and lines
    readonly property color text: dark ? "#f2f2f4" : "#1d1d1f"
    readonly property color secondaryText: dark ? "#c0c0c7" : "#505056"
    readonly property color modelText: "#ffffff"
    readonly property color separator: faded(text, dark ? 0.14 : 0.12)
    readonly property color fieldStroke: faded(text, dark ? 0.24 : 0.22)
    readonly property color focusRing: dark ? "#4c9bff" : "#2f7de1"
    readonly property color hover: faded(text, 0.06)
    readonly property color pressed: faded(text, 0.12)
    readonly property color dim: faded("#000000", dark ? 0.5 : 0.32)
    readonly property color shade: faded("#000000", 0.05) // over the window's ground
    readonly property color shadow: faded("#000000", dark ? 0.45 : 0.17)

    // The accent is a ground, the others are colours of text and signs.
    readonly property color accent: dark ? "#1f6fe5" : "#0a60d6"
    readonly property color accentText: "#ffffff"
    readonly property color blue: dark ? "#72b2ff" : "#0852b8"
    readonly property color green: dark ? "#4fc46a" : "#176b2e"
    readonly property color orange: dark ? "#ff9f2e" : "#ba5c00"
    readonly property color red: dark ? "#ff857d" : "#b3261d"
    readonly property color gray: dark ? "#98989f" : "#77777d"
    readonly property color teal: dark ? "#4fc3cf" : "#09666f"
    readonly property color yellow: dark ? "#ffd84d" : "#765300"
    readonly property color slackPurple: dark ? "#c79bf2" : "#660099"

    readonly property var modelGrounds: dark ? darkModelGrounds : lightModelGrounds
    readonly property var lightModelGrounds: ({
        purple: "#5b237e", blue: "#003a91", green: "#044819", orange: "#6c2b00", cyan: "#00435c",
        red: "#8d1017", teal: "#004547", indigo: "#322d9b", pink: "#880d48", yellow: "#523800",
        mint: "#02482e", brown: "#503621", gray: "#3b3a42"
    })
    readonly property var darkModelGrounds: ({
        purple: "#914cbb", blue: "#1865d9", green: "#147b34", orange: "#ad5013", cyan: "#117297",
        red: "#ca2c36", teal: "#0d7679", indigo: "#645fc1", pink: "#c62974", yellow: "#8a640f",
        mint: "#117a54", brown: "#886344", gray: "#6a6a75"
    })

    // Measures, in points
    readonly property int radius: 6
    readonly property int cardRadius: 10
    readonly property int gap: 6
    readonly property int pad: 8
    readonly property int fieldHeight: 24
    readonly property int gutter: 12 // where a scroll bar runs
    readonly property int quick: 120 // ms
    readonly property int calm: 200
    readonly property int comeBack: 150 // of what was dragged
    readonly property int tipDelay: 600

    readonly property string textFamily: MarkedText.textFamily()
    readonly property string monospace: MarkedText.codeFamily()
    readonly property font body: font(13, Font.Normal)
    readonly property font headline: font(13, Font.DemiBold)
    readonly property font title3: font(15, Font.DemiBold)
    readonly property font title: font(20, Font.Bold)
    readonly property font caption: Qt.font({
        family: textFamily, pixelSize: 10, weight: Font.DemiBold,
        letterSpacing: 0.5, capitalization: Font.SmallCaps
    })

    function font(size: real, weight: int, tracking: real): font {
        return Qt.font({
            family: textFamily, pixelSize: size, weight: weight, letterSpacing: tracking ? tracking : 0
        });
    }

    // Colours out of data and tables come as words.
    function colourOf(colour: var): color {
        return typeof colour === "string" ? Qt.color(colour) : colour;
    }

    function faded(colour: var, opacity: real): color {
        const c = colourOf(colour);
        return Qt.rgba(c.r, c.g, c.b, c.a * opacity);
    }

    // What is seen where a colour lies on an opaque ground.
    function over(colour: var, ground: var): color {
        const c = colourOf(colour), g = colourOf(ground);
        const mix = (top, below) => top * c.a + below * (1 - c.a);
        return Qt.rgba(mix(c.r, g.r), mix(c.g, g.g), mix(c.b, g.b), 1);
    }

    // 0 to 1, as WCAG 2.1 defines it.
    function luminance(colour: var): real {
        const c = colourOf(colour);
        const linear = v => v <= 0.04045 ? v / 12.92 : Math.pow((v + 0.055) / 1.055, 2.4);
        return 0.2126 * linear(c.r) + 0.7152 * linear(c.g) + 0.0722 * linear(c.b);
    }

    function contrast(one: var, other: var): real {
        const a = luminance(one), b = luminance(other);
        return (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
    }

    // The colour itself, or the nearest on the way to black or white that can be read on the ground.
    function readable(colour: var, ground: var): color {
        const end = luminance(ground) < 0.18 ? "#ffffff" : "#000000";
        for (let part = 0; part < 1; part += 0.04) {
            const tried = over(faded(end, part), colour);
            if (contrast(tried, ground) >= 4.6)
                return tried;
        }
        return colourOf(end);
    }

    // The colour as a ground on which white can be read.
    function filled(colour: var): color {
        return readable(over(colour, "#ffffff"), "#ffffff");
    }

    // A section's light tint, or its dark sister.
    function chainGround(tint: var): color {
        return dark ? sister(tint, 0.20, 0.20) : colourOf(tint);
    }

    function pastelGround(colour: var, opacity: real): color {
        return over(faded(dark ? sister(colour, 0.24, 0.26) : colour, opacity), card);
    }

    // Of the same hue.
    function sister(colour: var, saturation: real, lightness: real): color {
        const hue = colourOf(colour).hslHue; // none of a gray
        return Qt.hsla(Math.max(hue, 0), hue < 0 ? 0 : saturation, lightness, 1);
    }

    // The ground of a model's row; anything unknown is gray.
    function modelGround(name: string): color {
        return colourOf(modelGrounds[name] ?? modelGrounds.gray);
    }

    // Signs by the names that the record has for them, and the files that show them.
    readonly property var symbols: ({
        "bolt.fill": "lightning-fill", "bolt.slash": "lightning-slash",
        "book.closed.fill": "book-fill", "key.fill": "key-fill", "doc.fill": "file-fill",
        "folder.fill": "folder-fill", "books.vertical.fill": "books-fill",
        "creditcard.fill": "credit-card-fill", "plus.circle.fill": "plus-circle-fill",
        "play.fill": "play-fill", "pause.fill": "pause-fill", "stop.fill": "stop-fill",
        "minus.circle": "minus-circle", "lightbulb.fill": "lightbulb-fill",
        "ellipsis.circle": "dots-three-circle", "text.alignleft": "text-align-left",
        "chevron.left": "caret-left-bold", "chevron.right": "caret-right-bold",
        "chevron.up": "caret-up-bold", "chevron.down": "caret-down-bold", "xmark": "x-bold",
        "xmark.circle.fill": "x-circle-fill", "checkmark": "check-bold", "plus": "plus-bold",
        "arrow.clockwise": "arrow-clockwise",
        "arrow.clockwise.circle.fill": "arrow-clockwise-circle-fill"
    })

    function symbol(platformName: string): string {
        return symbols[platformName] ?? platformName;
    }
}
