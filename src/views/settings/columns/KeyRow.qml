import QtQuick
import Varnhold

// A provider that knows keys only.
Item {
    id: root

    required property ProvidersPart providers
    required property int index
    required property string name
    required property string tag
    required property bool isAuthorized
    required property string apiKey

    implicitHeight: provider.height + 3 + key.height
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: isAuthorized ? "Signed in" : "Not signed in"

    ProviderName {
        id: provider

        height: 19
        name: root.name
        tag: root.tag
        isAuthorized: root.isAuthorized
    }

    Field {
        id: key

        anchors.bottom: parent.bottom
        width: parent.width
        height: 22
        placeholder: "API Key..."
        name: "API key of %1".arg(root.name)
        text: root.apiKey
        onEdited: text => root.providers.setOnlyKey(root.index, text)
    }
}
