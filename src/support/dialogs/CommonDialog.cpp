#include "support/dialogs/CommonDialog.h"

CommonDialog::~CommonDialog() = default;
