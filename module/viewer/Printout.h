#pragma once

#include <QString>

class QPagedPaintDevice;

namespace ca {

/// Prints a text on as many pages as it takes, with their numbers; of one longer than a book the
/// beginning, and how much more there is.
void PrintText(QPagedPaintDevice& device, const QString& title, const QString& text);

}  // namespace ca
