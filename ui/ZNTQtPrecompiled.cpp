// Nothing of its own: this library compiles Qt's headers once for all rooms of the window.
