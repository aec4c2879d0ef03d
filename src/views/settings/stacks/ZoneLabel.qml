import QtQuick
import Varnhold

// The small heading of a zone.
Label {
    font: Theme.font(9, Font.Bold, 1)
    color: Theme.secondaryText
    Accessible.role: Accessible.Heading
}
