#pragma once

class QWidget;

/// Moves a window that is not shown yet to the middle of its screen, at the size that its contents want.
void centreOnScreen(QWidget& window);
