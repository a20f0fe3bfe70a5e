import Velmor.Controls

// The window's ground: white, with a tint in two opposite corners.
DiagonalGradient {
    from: Theme.gradientTop
    to: Theme.gradientBottom
}
