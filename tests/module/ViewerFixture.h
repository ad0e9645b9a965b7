#pragma once

// A viewer window on the screen, for tests that drive it.

#include "common/Lng.h"
#include "module/viewer/CertInfoDlg.h"
#include "tests/common/TemporaryDir.h"

#include <QPlainTextEdit>
#include <QPointer>
#include <QSettings>
#include <QtTest>
#include <gtest/gtest.h>

#include <string>

class ViewerTest : public testing::Test {
  protected:
    void SetUp() override {
        SetZORNALng(L"en");
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                           QString::fromStdString(m_settings.Path()));
        m_viewer = CCertInfoDlg::Create();
        m_viewer->show();
        m_viewer->activateWindow();  // there may be no window manager to do so
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_viewer));
    }
    void TearDown() override {
        delete m_viewer;
        SetZORNALng(L"ru");
    }

    bool Fill(const char* operation, const QByteArray& octets) {
        bool isDone = false;
        EXPECT_TRUE(QMetaObject::invokeMethod(m_viewer, operation, Q_RETURN_ARG(bool, isDone),
                                              Q_ARG(QByteArray, octets)));
        return isDone;
    }
    bool FillFile(const char* operation, const QByteArray& octets, const char* name) {
        bool isDone = false;
        EXPECT_TRUE(QMetaObject::invokeMethod(m_viewer, operation, Q_RETURN_ARG(bool, isDone),
                                              Q_ARG(QByteArray, octets),
                                              Q_ARG(QString, QString(name))));
        return isDone;
    }
    bool Export(const std::string& path, const char* format) {
        bool isDone = false;
        EXPECT_TRUE(QMetaObject::invokeMethod(m_viewer, "exportTo", Q_RETURN_ARG(bool, isDone),
                                              Q_ARG(QString, QString::fromStdString(path)),
                                              Q_ARG(QString, QString(format))));
        return isDone;
    }
    template <class Widget>
    Widget* Find(const char* name) {
        auto* widget = m_viewer->findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    QString Text(const char* name) { return Find<QPlainTextEdit>(name)->toPlainText(); }
    void GoTo(int page) { m_viewer->setProperty("page", page); }
    uint ErrorCode() const { return m_viewer->property("lastErrorCode").toUInt(); }

    TemporaryDir m_settings;
    QPointer<CCertInfoDlg> m_viewer;
};
