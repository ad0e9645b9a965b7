#pragma once

#include "module/viewer/CertDocument.h"

#include <QLabel>
#include <QTreeWidget>
#include <QWidget>

namespace ca {

/// A certificate below its issuers, the farthest one on top.
class CPathPage : public QWidget {
    Q_OBJECT
  public:
    explicit CPathPage(QWidget* parent = nullptr);

    /// \param current  the certificate that the other pages show; it is marked.
    void ShowPath(const CCertDocument& document, std::size_t current);
    void Translate();

  Q_SIGNALS:
    /// The user went to a certificate: 0 the document's own, 1 its issuer. Connect it queued: the
    /// tree may not be filled anew while it handles the key or click.
    void Chosen(int index);

  private:
    QLabel* m_hint;
    QTreeWidget* m_tree;
};

}  // namespace ca
