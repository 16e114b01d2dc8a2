/* A host in C: reads a card, prints its fields and pictures, looks the person up, and ends.
 * usage: QVCARDSCAN_TOKEN=... c-host SERVER_URL PICTURE [BACK] */
#include <qvcardscan.h>
#include <stdio.h>
#include <stdlib.h>

struct host {
    int is_done;
    int status;
};

static int32_t is_done(void* data) {
    return ((const struct host*)data)->is_done;
}

static void finish(struct host* host, int status) {
    host->status = status;
    host->is_done = 1;
}

/* The error, and what caused it: what is underneath says it in words. */
static int fail(const char* what, qv_error* error) {
    fprintf(stderr, "%s", what);
    while (error != NULL) {
        const char* message = qv_error_message(error);
        qv_error* cause = qv_error_underlying(error);
        fprintf(stderr, ": %s %ld%s%s", qv_error_domain(error), (long)qv_error_code(error), message != NULL ? ": " : "",
                message != NULL ? message : "");
        qv_error_release(error);
        error = cause;
    }
    fprintf(stderr, "\n");
    return EXIT_FAILURE;
}

static void print_fields(const qv_response* response) {
    qv_field field = {.size = sizeof field};
    qv_resource resource = {.size = sizeof resource};
    for (size_t i = 0; qv_response_field(response, i, &field); ++i)
        printf("field %d: %s%s%s\n", (int)field.kind, field.label != NULL ? field.label : "",
               field.label != NULL ? " " : "", field.text);
    for (size_t i = 0; qv_response_resource(response, i, &resource); ++i)
        printf("picture %s: %s, %zu bytes\n", resource.hash, resource.type, resource.length);
}

static void searched(qv_search_result* result, void* data) {
    printf("search: type %d, %s\n", (int)qv_search_result_type(result),
           qv_search_result_has_profile(result) ? "found" : "not found");
    qv_search_result_release(result);
    finish(data, EXIT_SUCCESS);
}

/* On the main thread, because the request says so. */
static void recognised(qv_response* response, void* data) {
    qv_error* error = NULL;
    if (qv_response_error_count(response) > 0) {
        finish(data, fail("The card could not be read", qv_response_error(response, 0)));
    } else {
        print_fields(response);
        if (qv_search_start(response, searched, data, NULL, &error) != QV_OK)
            finish(data, fail("The search could not start", error));
    }
    qv_response_release(response);
}

/* What fails leaves its reason in the slot. */
static int start(qv_request* request, int count, char** pictures, const char* token, struct host* host,
                 qv_error** error) {
    for (int i = 0; i < count; ++i)
        if (qv_request_add_picture_file(request, pictures[i], NULL, error) != QV_OK) return 0;
    if (qv_request_set_token(request, token, error) != QV_OK) return 0;
    qv_request_set_completes_on_main_thread(request, 1);
    return qv_request_run(request, recognised, host, NULL, error) == QV_OK;
}

int main(int argc, char** argv) {
    const char* token = getenv("QVCARDSCAN_TOKEN");
    if (argc < 3 || token == NULL || qv_abi_version() != QV_ABI_VERSION) {
        fprintf(stderr, "usage: QVCARDSCAN_TOKEN=... c-host SERVER_URL PICTURE [BACK]\n");
        return EXIT_FAILURE;
    }
    struct host host = {0, EXIT_FAILURE};
    qv_error* error = NULL;
    if (qv_set_server_url(argv[1], &error) != QV_OK) return fail("The server's address", error);
    if (qv_set_search_credentials("key", "secret", &error) != QV_OK) return fail("The key", error);
    qv_request* request = qv_request_create("a-note");
    const int has_started = start(request, argc - 2, argv + 2, token, &host, &error);
    qv_request_release(request);
    if (!has_started) return fail("The request", error);
    if (!qv_pump_until(is_done, &host, 120.0)) fprintf(stderr, "No answer in time\n");
    return host.status;
}
