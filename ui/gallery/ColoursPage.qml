pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

Page {
    id: page

    title: "Colours"
    subtitle: "The palette and its gradients, top to bottom"

    component Swatch: Specimen {
        id: swatch

        property color color: Theme.ground

        Rectangle {
            width: 110
            height: 60
            color: swatch.color
        }
    }

    component Gradient: Specimen {
        id: shade

        property verticalGradient fill

        Surface {
            width: 110
            height: 120
            fill: shade.fill
        }
    }

    FlowLayout {
        width: parent.width
        spacing: 16

        Swatch { name: "ground"; color: Theme.ground }
        Swatch { name: "amber"; color: Theme.amber }
        Swatch { name: "mint"; color: Theme.mint }
        Swatch { name: "coral"; color: Theme.coral }
        Swatch { name: "ink"; color: Theme.ink }
        Swatch { name: "line"; color: Theme.line }
        Swatch { name: "text"; color: Theme.text }
        Swatch { name: "label"; color: Theme.label }
        Swatch { name: "secondary"; color: Theme.secondary }
        Swatch { name: "tertiary"; color: Theme.tertiary }
    }

    FlowLayout {
        width: parent.width
        spacing: 16

        Gradient { name: "groundGradient"; fill: Theme.groundGradient }
        Gradient { name: "sidebarGradient"; fill: Theme.sidebarGradient }
        Gradient { name: "amberGradient"; fill: Theme.amberGradient }
        Gradient { name: "panelGradient"; fill: Theme.panelGradient }
        Gradient { name: "rim"; fill: Theme.rim }
        Gradient { name: "knobGradient"; fill: Theme.knobGradient }
        Gradient { name: "bezelGradient"; fill: Theme.bezelGradient }
        Gradient { name: "wellGradient"; fill: Theme.wellGradient }
    }
}
