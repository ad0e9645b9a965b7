/* The smallest host: one request in C, linked against the installed library. */
#include <mod_foo.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

int main(void) {
    char request[] = "{\"mode\":38,\"clientId\":\"installed\"}";
    CMPacket packet;
    memset(&packet, 0, sizeof packet);
    packet.request = request;
    packet.requestLength = (uint32_t)strlen(request);

    void* module = CM_Init(1, NULL);
    if (module == NULL) {
        return 1;
    }
    CM_ProcessClientRequest(module, &packet);
    int isAnswered = packet.response != NULL && strstr(packet.response, "FooCertId") != NULL;
    free(packet.response);
    CM_Free(module);
    return isAnswered ? 0 : 1;
}
