#ifndef MOD_FOO_H
#define MOD_FOO_H

/**
 * The module's interface to its host: C11 and C++.
 *
 * A host loads libmod_foo.so.1, resolves the three CM_ functions by name, creates one module with
 * CM_Init(), hands it requests with CM_ProcessClientRequest() from any number of threads, and frees
 * it with CM_Free(). Nothing is ever thrown through these functions.
 *
 * A thread may be cancelled (pthread_cancel), or end inside the log callback, while it creates a
 * module or runs a request: it unwinds, what the call holds is released, and no answer is made. In
 * CM_Free(), in the GUI thread's work and inside network transfers' steps a cancellation waits.
 *
 * A child of fork() goes on with the modules of its parent, wherever the parent's other threads
 * were. Requests that show a window are refused there (16131), unless the thread of the application
 * forked.
 */

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#ifndef __cplusplus
#include <wchar.h>
#endif

#if defined(__GNUC__)
#define MOD_FOO_EXPORT __attribute__((visibility("default")))
#else
#define MOD_FOO_EXPORT
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * One request and its answer. All sizes are octets.
 *
 * Request framing: UTF-8 JSON text, an object. The text ends at the first NUL inside
 * `requestLength`, or at `requestLength` when there is none. With the key "fileDataSize": N the N
 * octets after that NUL are the request's file data.
 *
 * Answer framing: UTF-8 JSON text and one NUL. Without raw data `responseSize` is the length of the
 * text, the NUL not counted. When the request came with "fileDataSize" and the answer holds file
 * data, the object carries "fileDataSize": B, the NUL is followed by B octets, and `responseSize`
 * counts text, NUL and octets.
 */
typedef struct CMPacket {
    uint64_t hostData[2]; /**< The host's own; never read or written by the module. */

    /**
     * In: the request; stays the host's. Null is answered with error 16300. The module may write
     * inside [request, request + requestLength) during the call when the request carries
     * "fileDataEncodedSize": its Base64 file data is then cut out of the text in place.
     */
    char* request;
    uint32_t requestLength; /**< In: octets at `request`. */

    /**
     * In: true when the request comes from an interactive user's own process. False: it comes
     * through the service, and operations that use a private key or show a window need the
     * configuration's AllowServicePrivateKeyAccess.
     */
    bool interactive;

    /**
     * Out: the answer. The host releases it with free(). Overwritten without being read, so an
     * older answer has to be released first. Null with size 0 only when there was no memory even
     * for the shortest answer.
     */
    char* response;
    uint32_t responseSize; /**< Out: octets of the answer, see above. */
} CMPacket;

/**
 * The host's log sink. `line` is a NUL-terminated text (UTF-32) that is valid during the call only;
 * `isError` marks an error line. Returns whether it took the line. It is entered from every thread
 * that runs a request and from the GUI thread of a process with windows, may not throw, and may not
 * call the module.
 */
typedef bool (*CMLogCallback)(const wchar_t* line, bool isError);

/**
 * Creates a module and reads the configuration; a missing or broken one means defaults.
 *
 * A module that is not silent tells the user of a broken configuration in a process with a Qt
 * application with widgets. In the GUI thread that is a modal box, and CM_Init() returns when it is
 * closed. From any other thread the box is opened, and CM_Init() waits for a GUI thread that does
 * not get to it, some ten seconds at most. A host that may not be kept waiting creates a silent
 * module, which shows nothing at all, or calls CM_Init() beside its GUI thread. Without such an
 * application the warning is a line of the log.
 *
 * \param silent    Only the low eight bits count: not 0 for a module that shows no windows.
 * \param callback  Log sink of the whole process until CM_Free(): that of the newest module alive
 * is called. Null logs nothing. \return The module, or null when it could not be created. To be
 * released with CM_Free().
 *
 * Not to be called while another module of this process runs requests: callback and language are
 * the process's.
 */
MOD_FOO_EXPORT void* CM_Init(int silent, CMLogCallback callback);

/**
 * Runs one request and fills `response` and `responseSize`. Does nothing when either argument is
 * null. Any number of threads may run requests of one module at the same time, each with a packet
 * of its own. Every failure is an answer: "errorCode" is 0 on success.
 */
MOD_FOO_EXPORT void CM_ProcessClientRequest(void* module, CMPacket* packet);

/**
 * Releases the module; null is ignored. No request of it may be running.
 *
 * Afterwards its callback is not called any more, by windows left open neither, so that the host
 * may unload the callback's code: calls that other threads are inside are waited for, five
 * seconds at most. A callback that another module was created with as well stays in use for that
 * one.
 */
MOD_FOO_EXPORT void CM_Free(void* module);

#ifdef __cplusplus
}  // extern "C"

class CCertInfoDlg;

/// A new viewer of certificates and of the files that hold them, to be shown by the caller; it
/// deletes itself when closed. It stays on top of other windows and takes the keyboard focus. Null
/// without a running Qt GUI application, and outside its GUI thread.
/// The symbol is decorated: "_Z17createCertInfoDlgv" (Itanium C++ ABI).
///
/// The viewer is a QDialog, and the address is that of its QObject:
/// `auto* viewer = reinterpret_cast<QDialog*>(createCertInfoDlg());`. It is filled by name, through
/// the meta-object, in the GUI thread. Invokable operations (QMetaObject::invokeMethod, direct
/// connection); false is a failure, and what was shown before stays:
///
///     bool setCertificate(QByteArray octets)  DER, PEM, Base64 or PKCS #7; issuers among them
///                                             appear on the path. Of a signed message the first
///                                             signer's certificate, where the message holds it
///     bool setRecordJson(QByteArray utf8)     the JSON object of a "CertInfo2", as answers hold it
///                                             under "certInfo"; a whole answer does as well
///     bool setStructure(QByteArray octets)    BER of any kind (a CRL, a message), damaged too: its
///                                             structure
///     bool showFile(QByteArray octets, QString name)
///                                             whatever is in a file, up to 32 MiB: DER, PEM,
///                                             Base64, S/MIME, a record's JSON. Its items are
///                                             listed: signatures with countersignatures and time
///                                             stamps, certificates, lists, recipients, and what
///                                             else is described (OCSP responses, key stores). The
///                                             name is shown, "" for none
///     bool addFile(QByteArray octets, QString name)
///                                             the same beside the files that are shown
///     bool openFiles(QStringList paths)       files of this machine in the place of those that
///                                             are shown; false when not all of them can be
///     bool exportTo(QString path, QString format)
///                                             what is shown as "der", "pem", "text" or "json" (as
///                                             answers hold it); "" goes by the path's ending
///
/// Properties (QObject::setProperty, property):
///
///     QString language        "en", "ru"; "" (as created) for the language of the module. The user
///                             may change it in the window
///     QString lastError       why the last operation failed, "" after a success; read only
///     uint lastErrorCode      its code, one of those answers carry; read only
///     int certificateCount    certificates on the path, 0 for none; read only
///     int currentCertificate  the one shown: 0 the certificate, 1 its issuer, and so on; -1 while
///                             a signature is shown, whose signer's path it is
///     int page                0 general, 1 details, 2 path, 3 ASN.1 structure, 4 entries of a
///                             revocation list; a page that an item does not have is not shown
///     int itemCount           rows of the list of what the files hold; read only
///     int currentItem         the one shown, from 0 on, in the order of the list
///     QString headline        what the files are, in a line: "Signed message, 2 signatures,
///                             content enclosed"; read only
///
/// The size of the window is kept between runs in the user's settings, "ZORNA/CertificateViewer".
MOD_FOO_EXPORT CCertInfoDlg* createCertInfoDlg();
#endif

#endif  // MOD_FOO_H
