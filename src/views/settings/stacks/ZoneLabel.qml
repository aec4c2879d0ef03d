import QtQuick
import Varnhold

// The small heading of a zone.
Label {
    font: Theme.zone
    color: Theme.secondaryText
    Accessible.role: Accessible.Heading
}
