#include "module/viewer/GeneralPage.h"

#include "common/ErrorCodes.h"
#include "module/viewer/CertFields.h"
#include "module/viewer/ViewerText.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

namespace {

constexpr std::wstring_view kKeyUsage = L"2.5.29.15";
constexpr std::wstring_view kExtendedKeyUsage = L"2.5.29.37";
constexpr int kNoEndYear = 9999;
constexpr qint64 kSecondsOfHour = 3600;
constexpr qint64 kSecondsOfDay = 24 * kSecondsOfHour;

QDateTime ReadUtc(const QString& text) {
    QDateTime time = QDateTime::fromString(text, QStringLiteral("dd.MM.yyyy HH:mm:ss"));
    time.setTimeSpec(Qt::UTC);
    return time;
}

// Both extensions that limit the use (RFC 5280 4.2.1.3, 4.2.1.12). Without them it is not limited,
// which can be said of a certificate alone that is there and was read without faults.
QString UsageText(const ca::CertInfo& record) {
    std::wstring usage = record.keyUsageStr;
    bool isKnown = !record.rawData.empty() && record.error.empty();
    for (const auto& extension : record.extensions.items) {
        if (extension->oidValue == kExtendedKeyUsage) {
            usage += (usage.empty() ? L"" : L"\n") + extension->formattedData;
        }
        isKnown = isKnown && extension->oidValue != kKeyUsage;
    }
    return usage.empty() && isKnown ? ca::MessageText(kMsgDlgUsageNotLimited)
                                    : ca::ShownText(usage);
}

// From and to; a question mark for the one that could not be read.
QString PeriodText(const QString& from, const QString& to) {
    if (from.isEmpty() && to.isEmpty()) {
        return {};
    }
    const QString unknown = QStringLiteral("?");
    return (from.isEmpty() ? unknown : from) + QString::fromWCharArray(L" \u2013 ") +
           (to.isEmpty() ? unknown : to);
}

// A verdict's sign beside its words; what was not checked is neither good nor bad.
QStyle::StandardPixmap StatusSign(const ca::CertInfo& record, bool isInPeriod) {
    if (record.validityNumber == ca::kErrChainValid) {
        return QStyle::SP_DialogApplyButton;
    }
    if (record.validityNumber == ca::kErrNotVerified || record.validityNumber == 0) {
        return isInPeriod ? QStyle::SP_MessageBoxInformation : QStyle::SP_MessageBoxWarning;
    }
    return QStyle::SP_MessageBoxWarning;
}

}  // namespace

namespace ca {

CGeneralPage::CGeneralPage(QWidget* parent) : QWidget(parent) {
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    auto* heading = new QHBoxLayout;
    column->addLayout(heading);
    m_icon = new QLabel;
    m_title = new CTextBox;
    m_title->setObjectName("titleText");
    m_title->setFocusPolicy(Qt::ClickFocus);  // the subject below says the same
    QFont font = m_title->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.25);
    m_title->setFont(font);
    heading->addWidget(m_icon);
    heading->addWidget(m_title, 1);

    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    form->setLabelAlignment(Qt::AlignLeft);
    form->setFormAlignment(Qt::AlignLeft | Qt::AlignTop);
    column->addLayout(form);
    m_status = AddRow(*form, kMsgDlgStatus, "statusText");
    m_subject = AddRow(*form, kMsgDlgSubject, "subjectText");
    m_issuer = AddRow(*form, kMsgDlgIssuer, "issuerText");
    m_period = AddRow(*form, kMsgDlgValidity, "validityText");
    m_usage = AddRow(*form, kMsgDlgUsage, "usageText");
    m_serial = AddRow(*form, kMsgDlgSerial, "serialText");
    column->addStretch(1);

    auto* area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(content);
    area->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(area);
}

CTextBox* CGeneralPage::AddRow(QFormLayout& form, ZornaMessage caption, const char* name) {
    auto* label = new QLabel;
    auto* text = new CTextBox;
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    text->setObjectName(name);
    form.addRow(label, text);
    m_rows.push_back({caption, label, text});
    return text;
}

void CGeneralPage::ShowRecord(const CertInfo* record) {
    if (record == nullptr) {
        m_title->SetText({});
        m_icon->clear();
        for (const Row& row : m_rows) {
            row.text->SetText({});
        }
        return;
    }
    m_title->SetText(OrDash(ShortName(record->subjectTags, record->description)));
    m_subject->SetText(OrDash(ShownText(record->description)));
    m_issuer->SetText(OrDash(ShownText(record->issuer)));
    m_serial->SetText(OrDash(ShownText(record->serial)));
    m_usage->SetText(OrDash(UsageText(*record)));
    ShowStatus(*record, QDateTime::currentDateTimeUtc());
}

void CGeneralPage::ShowStatus(const CertInfo& record, const QDateTime& now) {
    const QString from = ShownText(record.validFromUtc);
    const QString to = ShownText(record.validToUtc);
    const QString remaining = RemainingText(from, to, now);
    const QString period =
        OrDash(PeriodText(ShownText(record.validFrom), ShownText(record.validTo)));
    m_period->SetText(remaining.isEmpty() ? period : period + "\n" + remaining);
    QString status = ShownText(record.validity);
    if (!record.error.empty()) {
        status += (status.isEmpty() ? "" : "\n") + MessageText(kMsgFieldFaults) + ": " +
                  ShownText(record.error);
    }
    m_status->SetText(OrDash(status));
    const bool isInPeriod = ReadUtc(from) <= now && now <= ReadUtc(to);
    const int size = style()->pixelMetric(QStyle::PM_LargeIconSize);
    const QIcon sign = style()->standardIcon(StatusSign(record, isInPeriod), nullptr, this);
    m_icon->setPixmap(sign.pixmap(size, size));
    m_icon->setAccessibleName(status);
}

void CGeneralPage::Translate() {
    m_title->setAccessibleName(MessageText(kMsgDlgTitle));
    for (const Row& row : m_rows) {
        row.label->setText(MessageText(row.caption));
        row.text->setAccessibleName(MessageText(row.caption));
    }
}

QString RemainingText(const QString& fromUtc, const QString& toUtc, const QDateTime& now) {
    const QDateTime from = ReadUtc(fromUtc);
    const QDateTime to = ReadUtc(toUtc);
    if (!from.isValid() || !to.isValid() || from > to) {
        return {};
    }
    if (now < from) {
        const qint64 days = (now.secsTo(from) + kSecondsOfDay - 1) / kSecondsOfDay;
        return MessageText(kMsgDaysUntilStart) + QString::number(days);
    }
    const qint64 left = now.secsTo(to);
    if (left < 0) {
        return MessageText(kMsgDaysSinceEnd) + QString::number(-left / kSecondsOfDay);
    }
    if (to.date().year() == kNoEndYear) {
        return {};
    }
    return left < kSecondsOfDay
               ? MessageText(kMsgHoursLeft) + QString::number(left / kSecondsOfHour)
               : MessageText(kMsgDaysLeft) + QString::number(left / kSecondsOfDay);
}

}  // namespace ca
