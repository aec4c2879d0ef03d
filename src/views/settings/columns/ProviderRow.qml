import QtQuick
import Varnhold

// A provider that can be signed in to in two ways, and what the chosen one needs.
Item {
    id: root

    required property ProvidersPart providers
    required property int index
    required property string name
    required property string tag
    required property bool isAuthorized
    required property string method
    required property bool asksForKey
    required property string apiKey

    implicitHeight: picker.height + 3 + key.height
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: isAuthorized ? "Signed in" : "Not signed in"

    ProviderName {
        anchors.verticalCenter: picker.verticalCenter
        name: root.name
        tag: root.tag
        isAuthorized: root.isAuthorized
    }

    Segmented {
        id: picker

        anchors.right: parent.right
        width: 140
        height: 19
        size: Theme.tinySize
        values: root.providers.methods
        current: root.method
        name: "Sign-in for %1".arg(root.name)
        onChosen: value => root.providers.setMethod(root.index, value)
    }

    TextButton {
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.hair
        visible: !root.asksForKey
        text: "Verify"
        size: Theme.smallSize
        help: "Signs in to %1 in a terminal window".arg(root.name)
        onClicked: root.providers.verify(root.index)
    }

    Field {
        id: key

        anchors.bottom: parent.bottom
        width: parent.width
        height: 22
        visible: root.asksForKey
        placeholder: "API Key..."
        name: "API key of %1".arg(root.name)
        text: root.apiKey
        onEdited: text => root.providers.setApiKey(root.index, text)
    }
}
