/* The smallest host, linked against the installed library: C11, and C++ as well. */
#include <mod_foo.h>
#include <mod_foo_codes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

struct Mode {
    int number;
    const char* name;
    int gated;
};
static const struct Mode modes[] = {
#define MODE(number, name, gated, english, russian) {number, name, gated},
    CM_MODES(MODE)};

/* Whether the module answers a request of one mode with this code, and with this word in the text. */
static int answers(void* module, int mode, unsigned code, const char* word) {
    char request[200];
    char expected[64];
    CMPacket packet;
    int isAnswered;
    snprintf(request, sizeof request, "{\"%s\":%d,\"%s\":\"installed\",\"%s\":\"SGVsbG8=\"}",
             CM_KEY_MODE, mode, CM_KEY_CLIENT_ID, CM_KEY_FILE_DATA);
    snprintf(expected, sizeof expected, "\"%s\":%u,", CM_KEY_ERROR_CODE, code);
    memset(&packet, 0, sizeof packet);
    packet.request = request;
    packet.requestLength = (uint32_t)strlen(request);
    CM_ProcessClientRequest(module, &packet);
    isAnswered = packet.response != NULL && strstr(packet.response, expected) != NULL &&
                 strstr(packet.response, word) != NULL;
    if (!isAnswered) {
        fprintf(stderr, "mode %d: %s\n", mode, packet.response);
    }
    free(packet.response);
    return isAnswered;
}

int main(void) {
    size_t i;
    int isDone = 1;
    void* module = CM_Init(1, NULL);
    if (module == NULL) {
        return 1;
    }
    isDone &= answers(module, CM_MODE_ENUM_CERTS, CM_ERR_NONE, "\"" CM_KEY_CERTIFICATES "\"");
    isDone &= answers(module, CM_MODE_GET_CERT_INFO, CM_ERR_CERTIFICATE, CM_KEY_ERROR_MESSAGE);
    isDone &= answers(module, CM_MODE_PARSE_CERT + 1, CM_ERR_MODE_NOT_SUPPORTED, "");
    for (i = 0; i < sizeof modes / sizeof modes[0]; ++i) {
        if (modes[i].gated) {
            isDone &= answers(module, modes[i].number, CM_ERR_PRIVATE_KEY_ACCESS, "");
        }
    }
    CM_Free(module);
    return isDone ? 0 : 1;
}
