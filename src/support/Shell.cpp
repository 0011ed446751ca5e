#include "support/Shell.h"

Shell::~Shell() = default;
