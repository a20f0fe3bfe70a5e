import QtQuick
import Velmor.Controls

// The window's ground: white, with a tint in two opposite corners.
Rectangle {
    color: Theme.gradientTop
}
