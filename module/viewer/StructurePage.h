#pragma once

#include "module/viewer/Asn1TreeModel.h"
#include "module/viewer/HexView.h"

#include <QTreeView>
#include <QWidget>

#include <cstdint>
#include <vector>

namespace ca {

/// The ASN.1 structure as a tree beside its octets: what is selected in one is marked in the other.
class CStructurePage : public QWidget {
    Q_OBJECT
  public:
    explicit CStructurePage(QWidget* parent = nullptr);

    void ShowOctets(std::vector<unsigned char> octets);
    /// \param language  as CAsn1TreeModel::SetLanguage().
    void Translate(std::uint32_t language);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void MarkSelected();
    void SelectAt(std::size_t offset);
    void CopyMarked();

    QTreeView* m_tree;
    CHexView* m_octets;
    CAsn1TreeModel* m_model;
};

}  // namespace ca
