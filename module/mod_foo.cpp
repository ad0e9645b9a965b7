// The entry points only: null checks, one call, nothing thrown past them but the unwinding of a
// thread that is cancelled or ends inside the host's callback: who stops that stops the process.

#include "module/mod_foo.h"

#include "common/CancelShield.h"
#include "module/CryptoModule.h"
#include "module/GuiThread.h"
#include "module/viewer/CertInfoDlg.h"

#include <cstring>
#include <exception>
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
        ca::LetThreadEnd();
        return nullptr;
    }
}

void CM_ProcessClientRequest(void* module, CMPacket* packet) {
    if (module == nullptr || packet == nullptr) {
        return;
    }
    char why[256] = "";  // kept without memory: there may be none
    try {
        static_cast<CCryptoModule*>(module)->ProcessJson(*packet);
        return;
    } catch (const std::exception& failure) {
        std::strncpy(why, failure.what(), sizeof why - 1);
    } catch (...) {
        ca::LetThreadEnd();
    }
    // Outside the handlers: the report may end the thread, too.
    ca::CryptoModule::AnswerFailure(*packet, why);
}

void CM_Free(void* module) {
    const ca::CCancelShield shield;  // it is freed as a whole
    delete static_cast<CCryptoModule*>(module);
}

CCertInfoDlg* createCertInfoDlg() {
    const ca::CCancelShield shield;
    try {
        CCertInfoDlg* const dialog = CCertInfoDlg::Create();
        if (dialog != nullptr) {
            ca::KeepLibraryLoaded();  // the window calls back into it
        }
        return dialog;
    } catch (...) {
        ca::LetThreadEnd();
        return nullptr;
    }
}
