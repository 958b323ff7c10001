import QtQuick

// Lays its children out like words, from the top leading corner, with `spacing` between them. One
// that is wider than the layout stands alone on its line. With no width given there is one line.
Flow {}
