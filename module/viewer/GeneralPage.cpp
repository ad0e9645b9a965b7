#include "module/viewer/GeneralPage.h"

#include "module/viewer/ViewerText.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPalette>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr qreal kTitleSize = 1.25;  // of the window's letters
constexpr int kHeadingSpace = 6;    // pixels in front of a heading
constexpr int kRowSpace = 3;        // pixels between rows
constexpr int kCaptionWidth = 24;   // characters; longer ones are broken

QStyle::StandardPixmap PixmapOf(ca::ItemSign sign) {
    switch (sign) {
        case ca::ItemSign::kGood:
            return QStyle::SP_DialogApplyButton;
        case ca::ItemSign::kInformation:
            return QStyle::SP_MessageBoxInformation;
        case ca::ItemSign::kBad:
            return QStyle::SP_MessageBoxCritical;
        default:
            return QStyle::SP_MessageBoxWarning;
    }
}

// Letters of a colour that can be read on the window's, be it light or dark: a contrast of 4.5 to 1 or
// more.
QColor ColourOf(ca::ItemSign sign, const QPalette& palette) {
    const bool isDark = palette.color(QPalette::Window).lightness() < 128;
    switch (sign) {
        case ca::ItemSign::kGood:
            return isDark ? QColor(0x7B, 0xD8, 0x8F) : QColor(0x14, 0x6C, 0x2E);
        case ca::ItemSign::kBad:
            return isDark ? QColor(0xFF, 0xA1, 0x98) : QColor(0xB3, 0x1D, 0x1D);
        default:
            return isDark ? QColor(0xFF, 0xC8, 0x66) : QColor(0x80, 0x4F, 0x00);
    }
}

QLabel* PlainLabel(const QString& text) {
    auto* label = new QLabel;
    // The texts are of strangers: nothing in them is markup.
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    return label;
}

}  // namespace

namespace ca {

CGeneralPage::CGeneralPage(QWidget* parent)
    : QWidget(parent),
      m_icon(new QLabel),
      m_title(new CTextBox),
      m_verdict(PlainLabel({})),
      m_area(new QScrollArea) {
    m_title->setObjectName("titleText");
    m_title->setFocusPolicy(Qt::ClickFocus);  // the rows below say the same
    QFont font = m_title->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * kTitleSize);
    m_title->setFont(font);
    auto* heading = new QHBoxLayout;
    heading->addWidget(m_icon);
    auto* words = new QVBoxLayout;
    words->addWidget(m_title);
    words->addWidget(m_verdict);
    heading->addLayout(words, 1);
    m_verdict->setObjectName("verdictText");
    m_verdict->setWordWrap(true);
    m_verdict->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_verdict->setFont(font);
    m_area->setWidgetResizable(true);
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // the rows are broken instead
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setFocusPolicy(Qt::NoFocus);
    m_area->viewport()->setAutoFillBackground(false);
    auto* whole = new QVBoxLayout(this);
    whole->addLayout(heading);
    whole->addWidget(m_area, 1);
}

void CGeneralPage::ShowItem(const ItemDescription& description) {
    m_title->SetText(description.title);
    m_title->setAccessibleName(description.kind);
    m_verdict->setText(description.verdict);
    m_verdict->setVisible(!description.verdict.isEmpty());
    m_sign = description.sign;
    ColourVerdict();
    m_icon->setVisible(description.sign != ItemSign::kNone);
    const int size = style()->pixelMetric(QStyle::PM_LargeIconSize);
    m_icon->setPixmap(
        style()->standardIcon(PixmapOf(description.sign), nullptr, this).pixmap(size, size));
    auto* content = new QWidget;
    m_rows = new QGridLayout(content);
    m_rows->setContentsMargins(0, 0, 0, 0);
    m_rows->setVerticalSpacing(kRowSpace);
    m_rows->setColumnStretch(1, 1);
    for (const SummaryRow& row : description.summary.Rows()) {
        AddRow(row);
    }
    m_rows->setRowStretch(m_rows->rowCount(), 1);
    m_area->setWidget(content);  // the old one goes
    content->setAutoFillBackground(false);
}

void CGeneralPage::ColourVerdict() {
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, ColourOf(m_sign, colours));
    m_verdict->setPalette(colours);
}

void CGeneralPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        ColourVerdict();
    }
}

void CGeneralPage::AddRow(const SummaryRow& row) {
    const int place = m_rows->rowCount();
    auto* caption = PlainLabel(row.caption + (row.key.isEmpty() ? "" : ":"));
    if (row.key.isEmpty()) {
        QFont font = caption->font();
        font.setBold(true);
        caption->setFont(font);
        caption->setContentsMargins(0, kHeadingSpace, 0, 0);
        m_rows->addWidget(caption, place, 0, 1, 2);
        return;
    }
    caption->setWordWrap(true);
    const int most = kCaptionWidth * fontMetrics().averageCharWidth();
    caption->setFixedWidth(
        std::min(caption->fontMetrics().horizontalAdvance(caption->text()) + 2, most));
    auto* text = new CTextBox;
    text->setObjectName(row.key + "Text");
    text->setAccessibleName(row.caption);
    text->SetText(row.text);
    m_rows->addWidget(caption, place, 0, Qt::AlignLeft | Qt::AlignTop);
    m_rows->addWidget(text, place, 1, Qt::AlignTop);
    if (!row.mark.isEmpty()) {
        text->setAccessibleDescription(row.mark);
        m_rows->addWidget(MarkOf(row), place + 1, 1);
    }
}

QWidget* CGeneralPage::MarkOf(const SummaryRow& row) {
    auto* whole = new QWidget;
    auto* line = new QHBoxLayout(whole);
    line->setContentsMargins(0, 0, 0, 0);
    auto* icon = new QLabel;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(
        style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(size, size));
    auto* words = PlainLabel(LaidOut(row.mark, kMaxBoxText));
    words->setObjectName(row.key + "Mark");
    words->setWordWrap(true);
    line->addWidget(icon, 0, Qt::AlignTop);
    line->addWidget(words, 1);
    return whole;
}

}  // namespace ca
