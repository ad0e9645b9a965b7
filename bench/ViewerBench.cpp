// The certificate viewer with a structure like that of a large revocation list: what the model
// costs, and how long it takes until the window shows it, scrolled and clicked into.

#include "module/viewer/Asn1TreeModel.h"
#include "module/viewer/CertInfoDlg.h"
#include "module/viewer/HexView.h"

#include <QApplication>
#include <QScrollBar>
#include <QTreeView>
#include <benchmark/benchmark.h>

#include <array>
#include <memory>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

constexpr std::size_t kSize = std::size_t{4} << 20;

void AppendHeader(Bytes& out, unsigned char tag, std::size_t length) {
    out.push_back(tag);
    out.push_back(0x83);
    for (int shift = 16; shift >= 0; shift -= 8) {
        out.push_back(static_cast<unsigned char>(length >> shift));
    }
}

// SEQUENCE { SEQUENCE { entries } }, an entry as RFC 5280, 5.1 has it: serial, time, reason.
Bytes ListOctets() {
    constexpr std::array<unsigned char, 42> kEntry = {
        0x30, 0x28, 0x02, 0x09, 0x00, 0xA1, 0xB2, 0xC3, 0xD4, 0xE5, 0xF6, 0x07, 0x18, 0x17,
        0x0D, '2',  '6',  '0',  '1',  '0',  '1',  '0',  '0',  '0',  '0',  '0',  '0',  'Z',
        0x30, 0x0C, 0x30, 0x0A, 0x06, 0x03, 0x55, 0x1D, 0x15, 0x04, 0x03, 0x0A, 0x01, 0x01};
    const std::size_t count = kSize / kEntry.size();
    Bytes octets;
    AppendHeader(octets, 0x30, count * kEntry.size() + 5);
    AppendHeader(octets, 0x30, count * kEntry.size());
    for (std::size_t i = 0; i < count; ++i) {
        octets.insert(octets.end(), kEntry.begin(), kEntry.end());
    }
    return octets;
}

void StartApplication() {
    static int argc = 1;
    static char name[] = "viewer_bench";
    static char* argv[] = {name, nullptr};
    if (QCoreApplication::instance() == nullptr) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static const QApplication application(argc, argv);
    }
}

void BuildModel(benchmark::State& state) {
    StartApplication();
    const Bytes octets = ListOctets();
    for (auto _ : state) {
        ca::CAsn1TreeModel model;
        model.SetOctets(octets);
        benchmark::DoNotOptimize(model.rowCount(model.index(0, 0)));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(octets.size()));
}

// From the octets to the painted window, every entry a row.
void ShowWindow(benchmark::State& state) {
    StartApplication();
    const Bytes octets = ListOctets();
    const QByteArray bytes(reinterpret_cast<const char*>(octets.data()),
                           static_cast<int>(octets.size()));
    for (auto _ : state) {
        const std::unique_ptr<CCertInfoDlg> viewer(CCertInfoDlg::Create());
        viewer->setStructure(bytes);
        viewer->show();
        QCoreApplication::processEvents();
        benchmark::DoNotOptimize(viewer->grab());
    }
}

// One step of scrolling through the entries, painted; and a click into the octets far down.
void ScrollAndClick(benchmark::State& state) {
    StartApplication();
    const Bytes octets = ListOctets();
    const std::unique_ptr<CCertInfoDlg> viewer(CCertInfoDlg::Create());
    viewer->setStructure(
        QByteArray(reinterpret_cast<const char*>(octets.data()), static_cast<int>(octets.size())));
    viewer->show();
    auto* tree = viewer->findChild<QTreeView*>("structureTree");
    auto* view = viewer->findChild<ca::CHexView*>("octets");
    std::size_t place = 0;
    for (auto _ : state) {
        tree->verticalScrollBar()->setValue(tree->verticalScrollBar()->value() + 10);
        place = (place + octets.size() / 7) % octets.size();
        Q_EMIT view->Chosen(place);
        benchmark::DoNotOptimize(viewer->grab());
    }
}

BENCHMARK(BuildModel)->Unit(benchmark::kMillisecond);
BENCHMARK(ShowWindow)->Unit(benchmark::kMillisecond);
BENCHMARK(ScrollAndClick)->Unit(benchmark::kMillisecond);

}  // namespace
