import QtQuick
import Velmor.Controls

// The application's picture, 30 points square.
BrandPicture {
    width: 30
    height: 30
    Accessible.ignored: true
}
