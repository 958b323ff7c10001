pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// A menu. It scrolls when it is taller than `tallest`.
T.Menu {
    id: control

    property real tallest: 400
    property Item opener: null // gets the focus back

    implicitWidth: Math.max(220, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.min(tallest, implicitContentHeight + topPadding + bottomPadding)
    padding: 6
    margins: 8
    overlap: 0
    onAboutToShow: opener = parent && parent.activeFocus ? parent : null
    onClosed: opener?.forceActiveFocus(Qt.TabFocusReason)
    enter: Transition {
        Ease { property: "opacity"; from: 0; to: 1; time: 100 }
    }
    exit: Transition {
        Ease { property: "opacity"; to: 0; time: 100 }
    }

    contentItem: ListView {
        implicitHeight: contentHeight
        implicitWidth: {
            let widest = 0;
            for (let i = 0; i < control.count; ++i) {
                widest = Math.max(widest, control.itemAt(i).implicitWidth);
            }
            return widest;
        }
        model: control.contentModel
        currentIndex: control.currentIndex
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        clip: interactive
        Accessible.role: Accessible.PopupMenu
        Accessible.name: control.title
        T.ScrollBar.vertical: ScrollBar {
            policy: T.ScrollBar.AlwaysOn
        }
    }

    background: Surface {
        radius: 10
        continuous: true
        fill: Theme.groundGradient
        rim: Theme.rim
        rimWidth: 1
        shadowColor: Theme.black(0.4)
        shadowRadius: 14
        shadowOffset: Qt.point(0, 6)
    }
}
