#include "support/dialogs/BrowseForFolderModule.h"

BrowseForFolderModule::~BrowseForFolderModule() = default;
