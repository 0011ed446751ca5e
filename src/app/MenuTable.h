#pragma once

#include <QKeySequence>
#include <QList>

/// What the menu bar holds: one row an entry, in order. A row without a key is a separator.
///
/// A command lives in its button; an entry presses that button and borrows its picture, so that entry and button
/// look alike and cannot come to differ.
struct MenuEntry
{
    const char* key = nullptr;
    const char* caption = nullptr;
    QKeySequence accelerator;

    /// The button whose picture the entry shows.
    const char* picture = nullptr;

    /// The buttons that it presses, one after the other. Entries without one are inert, or the window does what
    /// they ask for by itself.
    QList<const char*> clicks;

    bool isSeparator() const { return !key; }
};

struct MenuOfTable
{
    const char* key;
    const char* caption;
    QList<MenuEntry> entries;
};

const QList<MenuOfTable>& menuTable();
