#pragma once

class QWidget;

/// The window that a dialog is to stand in front of: the active one; where none is active, as while the splash is
/// all there is or while the user is in another program, the one that is seen. Null where nothing is seen.
///
/// A dialog without an owner can come to lie behind another window of the program, where it waits for an answer.
QWidget* dialogOwner();
