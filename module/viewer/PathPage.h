#pragma once

#include "module/viewer/FileDocument.h"

#include <QLabel>
#include <QTreeWidget>
#include <QWidget>

namespace ca {

/// A certificate below its issuers, the farthest one on top, and why there is no further one.
class CPathPage : public QWidget {
    Q_OBJECT
  public:
    explicit CPathPage(QWidget* parent = nullptr);

    /// \param shown  the item that the other pages show; it is marked.
    void ShowPath(const CFileDocument& document, const ItemPath& path, ItemIndex shown);
    void Translate();

  Q_SIGNALS:
    /// The user went to a certificate: 0 the one whose path it is, 1 its issuer. Connect it queued:
    /// the tree may not be filled anew while it handles the key or click.
    void Chosen(int index);

  private:
    QLabel* m_hint;
    QTreeWidget* m_tree;
    QLabel* m_end;
};

}  // namespace ca
