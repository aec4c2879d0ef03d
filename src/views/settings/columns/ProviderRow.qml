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
    Accessible.description: isAuthorized ? qsTr("Signed in") : qsTr("Not signed in")

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
        size: 10
        values: root.providers.methods
        current: root.method
        name: qsTr("Sign-in for %1").arg(root.name)
        onChosen: value => root.providers.setMethod(root.index, value)
    }

    TextButton {
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 1
        visible: !root.asksForKey
        text: qsTr("Verify")
        size: 11
        help: qsTr("Signs in to %1 in a terminal window").arg(root.name)
        onClicked: root.providers.verify(root.index)
    }

    Field {
        id: key

        anchors.bottom: parent.bottom
        width: parent.width
        height: 22
        visible: root.asksForKey
        placeholder: qsTr("API Key...")
        name: qsTr("API key of %1").arg(root.name)
        text: root.apiKey
        onEdited: text => root.providers.setApiKey(root.index, text)
    }
}
