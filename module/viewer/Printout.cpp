#include "module/viewer/Printout.h"

#include "module/viewer/ViewerText.h"

#include <QPagedPaintDevice>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextOption>

namespace {

constexpr int kMaxPrinted = 1 << 20;  // characters
constexpr qreal kTitleSize = 14;      // points
constexpr qreal kTextSize = 9;

}  // namespace

namespace ca {

void PrintText(QPagedPaintDevice& device, const QString& title, const QString& text) {
    QTextDocument document;
    QTextOption wrapping;
    wrapping.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document.setDefaultTextOption(wrapping);
    QTextCursor cursor(&document);
    QTextCharFormat heading;
    heading.setFontPointSize(kTitleSize);
    cursor.insertText(LaidOut(title, kMaxLineText) + "\n\n", heading);
    QTextCharFormat body;
    body.setFontPointSize(kTextSize);
    cursor.insertText(LaidOut(text, kMaxPrinted), body);
    document.print(&device);
}

}  // namespace ca
