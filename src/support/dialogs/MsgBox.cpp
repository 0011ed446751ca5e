#include "support/dialogs/MsgBox.h"

MsgBox::~MsgBox() = default;
