// The entry points only: null checks, one call, nothing thrown past them.

#include "module/mod_foo.h"

#include "module/viewer/CertInfoDlg.h"
#include "module/CryptoModule.h"
#include "module/GuiThread.h"

#include <memory>

void* CM_Init(int silent, CMLogCallback callback) {
    try {
        // Deliberate: hosts pass a bool in the low octet of a wider register.
        const bool isSilent = static_cast<unsigned char>(silent) != 0;
        auto module = std::make_unique<CCryptoModule>(isSilent);
        if (!module->Init(callback)) {
            return nullptr;
        }
        return module.release();  // the host gives it back to CM_Free()
    } catch (...) {
        return nullptr;
    }
}

void CM_ProcessClientRequest(void* module, CMPacket* packet) {
    if (module == nullptr || packet == nullptr) {
        return;
    }
    try {
        static_cast<CCryptoModule*>(module)->ProcessJson(*packet);
    } catch (...) {
        ca::CryptoModule::AnswerFailure(*packet);
    }
}

void CM_Free(void* module) {
    delete static_cast<CCryptoModule*>(module);
}

CCertInfoDlg* createCertInfoDlg() {
    try {
        CCertInfoDlg* const dialog = CCertInfoDlg::Create();
        if (dialog != nullptr) {
            ca::KeepLibraryLoaded();  // the window calls back into it
        }
        return dialog;
    } catch (...) {
        return nullptr;
    }
}
