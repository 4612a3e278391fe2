/* What no library of this project may be: it takes memory, starts a thread and keeps counts. */
#include <pthread.h>
#include <stdlib.h>

static volatile int calls;
static _Thread_local volatile int callsOfThread;

static void *Count(void *block)
{
    ++calls;
    ++callsOfThread;
    return block;
}

int Canary(void);
int Canary(void)
{
    pthread_t thread;
    void *block = malloc(16);
    int code = pthread_create(&thread, NULL, Count, block);
    if (code == 0) {
        code = pthread_join(thread, NULL);
    }
    free(block);
    return code;
}
