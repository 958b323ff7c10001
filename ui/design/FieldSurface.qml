import QtQuick
import Vellomar.Design

// The background of every field.
Surface {
    radius: 9
    continuous: true
    fill: Theme.flat(Theme.black(0.22))
    rim: Theme.vertical(Theme.black(0.25), Theme.white(0.14))
    rimWidth: 1
}
