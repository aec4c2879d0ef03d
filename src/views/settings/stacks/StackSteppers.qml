import QtQuick
import Varnhold

// How much the models of a stack may reason, and how much they may read.
Column {
    id: root

    required property StackPart stack

    property bool showEffort: true
    property string contextHelp: ""

    readonly property real valueColumn: Math.max(stack.effort.width, stack.context.width)

    spacing: Theme.gap

    Stepper {
        visible: root.showEffort
        label: root.stack.effort.label
        labelWidth: contextStepper.labelImplicitWidth
        valueText: root.stack.effort.text
        inactive: root.stack.effort.inactive
        valueWidth: root.stack.effort.width
        valueColumn: root.valueColumn
        canGoLeft: root.stack.effort.canGoLeft
        canGoRight: root.stack.effort.canGoRight
        onGoneLeft: root.stack.effortLeft()
        onGoneRight: root.stack.effortRight()
    }

    Stepper {
        id: contextStepper

        label: root.stack.context.label
        valueText: root.stack.context.text
        inactive: root.stack.context.inactive
        valueWidth: root.stack.context.width
        valueColumn: root.valueColumn
        canGoLeft: root.stack.context.canGoLeft
        canGoRight: root.stack.context.canGoRight
        help: root.contextHelp
        onGoneLeft: root.stack.contextLeft()
        onGoneRight: root.stack.contextRight()

        // Only one tool tip at a time, where all around it has one too.
        HoverHandler { blocking: true }
    }
}
