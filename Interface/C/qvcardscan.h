#ifndef QVCARDSCAN_H
#define QVCARDSCAN_H

/// @file
/// The library for hosts in C, and in every language that calls C.
///
/// **Handles.** `qv_request`, `qv_response`, `qv_error`, `qv_search_result` and `qv_work` are names for what the
/// library keeps. Every handle that a function returns or hands to a callback belongs to the host, which releases it
/// once, on any thread, inside a callback too. A handle that is null, released already or of another kind is harmless:
/// the call does nothing and answers with null, 0 or `QV_INVALID_ARGUMENT`, and a line in the log says so.
///
/// **Texts** are UTF-8 and end with a zero byte. Those that go in are copied. Those that come out belong to the handle
/// they were asked of, do not change, and are valid until it is released. Null is absent, which is not the empty text.
///
/// **Structures** begin with their own size, which the host sets to `sizeof` before every call. Later versions add
/// members at the end only.
///
/// **Threads.** Every function may be called from any thread, and from inside every callback. Each
/// callback says where it is called. Nothing that a callback throws may leave it; what a callback in C++ throws all the
/// same is caught by the library and logged, and that callback counts as called. None may end its thread.
///
/// **User data.** What is given together with a `release` function is released exactly once, when the library will not
/// use it again: also when the call fails, before it returns then. `release` may be null. Callbacks never come later.
///
/// **Errors.** Functions that can fail return a `qv_status` and take an `error` slot: null when nobody wants to know
/// more, otherwise it receives an error that the host releases, or null when nothing failed.

#include <stddef.h>
#include <stdint.h>

/// Marks what the library exports.
#define QV_C_API __attribute__((visibility("default")))

/// The version of this interface. A library serves every host that was built for its own version; see `qv_abi_version`.
#define QV_ABI_VERSION 1

/// Domain of the errors that this interface makes itself; their codes are those of `qv_status`.
#define QV_C_ERROR_DOMAIN "QVCInterfaceErrorDomain"

#ifdef __cplusplus
extern "C" {
#endif

/// One card to be read.
typedef struct qv_request qv_request;
/// What became of a request.
typedef struct qv_response qv_response;
/// A failure.
typedef struct qv_error qv_error;
/// What came of a search.
typedef struct qv_search_result qv_search_result;
/// Work for the host's main thread.
typedef struct qv_work qv_work;

/// How a call went.
typedef int32_t qv_status;
enum {
    QV_OK = 0,
    QV_INVALID_ARGUMENT = 1,  ///< null where that is not allowed, no UTF-8, a handle that is not live
    QV_UNREADABLE = 2,        ///< a file that cannot be read, or bytes that are no picture
    QV_REFUSED = 3,           ///< the library did not take the request; its log says why
    QV_FAILED = 4             ///< out of memory, or a fault of the library
};

/// Lets user data go.
typedef void (*qv_release_function)(void* user_data);

/// The version of the interface that the loaded library has. Hosts that load it at run time compare it with the
/// `QV_ABI_VERSION` they know, and do not go on when it differs.
QV_C_API uint32_t qv_abi_version(void);
/// The version of the library ("0.1.0"); valid for ever.
QV_C_API const char* qv_library_version(void);

/// @name Configuration of the process
/// @{

/// The recognition server's address, http or https; null: none, and requests answer with error 1.
QV_C_API qv_status qv_set_server_url(const char* url, qv_error** error);
/// The folder that holds the note templates, where it is not that of the installation; null brings the look-up back.
QV_C_API qv_status qv_set_data_folder(const char* path, qv_error** error);
/// The folder of vCards that searches ask; null: none. It need not be there.
QV_C_API qv_status qv_set_contacts_folder(const char* path, qv_error** error);
/// What allows searches; only whether both are there counts. Null: absent, and searches end with the time-out.
QV_C_API qv_status qv_set_search_credentials(const char* key, const char* secret, qv_error** error);
/// Seconds until a search counts as unanswered; 4 unless set. Call it on the main thread.
QV_C_API void qv_set_search_time_out(double seconds);

/// Gets one message of the log. Called on the thread that logs, several at once. What the library
/// would log because of what a sink does is dropped.
typedef void (*qv_log_function)(const char* message, size_t length, void* user_data);
/// Sends the log to the host. Messages hold what stands on cards. A null function discards everything.
QV_C_API void qv_set_log_sink(qv_log_function sink, void* user_data, qv_release_function release);
/// Sends the log to syslog(3), as it is at first.
QV_C_API void qv_use_system_log(void);
/// @}

/// @name The main thread
/// Searches end on the host's main thread, and requests when the host wishes so. Either the host calls `qv_pump` there
/// from time to time, or it puts the library's work into a loop of its own.
/// @{

/// Runs the work that is due, and returns how many pieces there were. The thread that calls it is the main thread. Does
/// nothing when the host has an executor of its own.
QV_C_API size_t qv_pump(void);
/// Pumps until `done` answers other than 0, or for so many seconds; returns what it answered last. `done` is called on
/// this thread, every few milliseconds. Answers 0 at once when the host has an executor of its own.
QV_C_API int32_t qv_pump_until(int32_t (*done)(void* user_data), void* user_data, double seconds);

/// A loop of the host's own. All functions are called from any thread. Work that never runs is never heard of; it is
/// kept until `qv_work_release`, also when `dispatch` fails.
typedef struct qv_main_executor {
    size_t size;      ///< `sizeof(qv_main_executor)`
    void* user_data;  ///< for the functions below
    /// Has `qv_work_run(work)` called on the main thread, once, when the delay is over; never inside this call. Work
    /// that falls due together keeps its order. Required.
    void (*dispatch)(void* user_data, uint64_t delay_in_nanoseconds, qv_work* work);
    /// Whether the calling thread is the main thread. Required.
    int32_t (*is_main_thread)(void* user_data);
    /// Called when nothing uses the executor any more; may be null.
    qv_release_function release;
} qv_main_executor;

/// Hands the library's work to a loop of the host's own; null brings `qv_pump` back. What the former one was given
/// stays there. The structure is copied.
QV_C_API qv_status qv_set_main_executor(const qv_main_executor* executor, qv_error** error);
/// Runs the work and releases it; a second time does nothing.
QV_C_API void qv_work_run(qv_work* work);
/// Lets work go that will never run.
QV_C_API void qv_work_release(qv_work* work);
/// @}

/// @name A request
/// @{

/// A request for the note of that identifier, which is the request's own too. Null when the text is null or no UTF-8.
QV_C_API qv_request* qv_request_create(const char* note_uuid);
/// Lets the request go; one that runs goes on.
QV_C_API void qv_request_release(qv_request* request);
/// Adds the picture of the front, then that of the back; a third is an invalid argument. The bytes are copied. `hash`
/// is the name by which the note refers to the picture: null for the MD5 of its bytes.
QV_C_API qv_status qv_request_add_picture_bytes(qv_request* request, const void* bytes, size_t length, const char* hash,
                                                qv_error** error);
/// The same for a file, which is read now. The path's bytes are passed to the system as they are.
QV_C_API qv_status qv_request_add_picture_file(qv_request* request, const char* path, const char* hash,
                                               qv_error** error);
/// What the recognition server knows the host by. Required.
QV_C_API qv_status qv_request_set_token(qv_request* request, const char* token, qv_error** error);
/// The language of the card ("de"); null is "en".
QV_C_API qv_status qv_request_set_language(qv_request* request, const char* language, qv_error** error);
/// Whether only the card's fields are wanted, without contact and note; 0 at first.
QV_C_API void qv_request_set_skip_note(qv_request* request, int32_t skip_note);
/// Whether the completion is called on the main thread; 0 at first: on a thread of the library.
QV_C_API void qv_request_set_completes_on_main_thread(qv_request* request, int32_t on_main_thread);

/// Gets the response, which is the host's to release. Never called for a request that was cancelled.
typedef void (*qv_completion)(qv_response* response, void* user_data);
/// Has the card read, as the request is now; at most three cards at once, the others wait. Fails when there is no
/// picture or no token, and when a request of that identifier is still under way.
QV_C_API qv_status qv_request_run(qv_request* request, qv_completion completion, void* user_data,
                                  qv_release_function release, qv_error** error);
/// Cancels every request of that identifier whose completion was not called yet. What runs goes on unseen. A completion
/// that comes on the main thread is never called after a cancellation there; one on a thread of the library may be
/// running already.
QV_C_API void qv_cancel(const char* note_uuid);
/// @}

/// @name A response
/// Never changes. Positions count from 0; one that is not there answers with null or 0.
/// @{

/// Lets the response go; a search that it started goes on.
QV_C_API void qv_response_release(qv_response* response);
/// The request's identifier; absent when there was no server address.
QV_C_API const char* qv_response_note_uuid(const qv_response* response);
/// The contact note in the host's markup; absent when it was not wanted, or could not be made.
QV_C_API const char* qv_response_note(const qv_response* response);
/// The person's name; absent when there is none.
QV_C_API const char* qv_response_name(const qv_response* response);
/// The server's answer for the first (0) and second (1) picture that was sent, as it came.
QV_C_API const char* qv_response_raw_result(const qv_response* response, size_t index);
/// By how many degrees the winning picture is turned clockwise.
QV_C_API int64_t qv_response_rotation(const qv_response* response);
/// Whether the library was ready to search when the card was done.
QV_C_API int32_t qv_response_can_search(const qv_response* response);

/// How many things failed, and what, in their order. Each answer is a handle of its own.
QV_C_API size_t qv_response_error_count(const qv_response* response);
/// See `qv_response_error_count`.
QV_C_API qv_error* qv_response_error(const qv_response* response, size_t index);

/// What a contact's field is.
enum {
    QV_FIELD_NAME = 1,
    QV_FIELD_TITLE = 2,
    QV_FIELD_COMPANY = 3,
    QV_FIELD_EMAIL = 4,
    QV_FIELD_PHONE = 5,
    QV_FIELD_ADDRESS = 6,
    QV_FIELD_URL = 7,
    QV_FIELD_TWITTER = 8,
    QV_FIELD_WEIBO = 9,
    QV_FIELD_LINKEDIN = 10,
    QV_FIELD_FACEBOOK = 11
};
/// A field of a contact, in the note's order.
typedef struct qv_field {
    size_t size;        ///< `sizeof(qv_field)`
    int32_t kind;       ///< `QV_FIELD_…`
    const char* label;  ///< of e-mail addresses and telephones; absent otherwise
    const char* text;   ///< never null
} qv_field;
/// How many fields the contact has; none when no note was wanted.
QV_C_API size_t qv_response_field_count(const qv_response* response);
/// Fills the structure; 0 when there is no such field, or the structure's size is too small.
QV_C_API int32_t qv_response_field(const qv_response* response, size_t index, qv_field* field);

/// A field as it was recognised. Lengths are the recognition server's, in pixels of the picture it was sent.
typedef struct qv_card_field {
    size_t size;       ///< `sizeof(qv_card_field)`
    int32_t type;      ///< 0 unknown, 1 name, 2 e-mail, 3 phone, 4 title, 5 company, 6 department, 7 URL, 8 address,
                       ///< 9 fax, 10 mobile, 11 Twitter, 12 Skype
    int64_t weight;    ///< the recogniser's confidence; higher is better
    int64_t rotation;  ///< degrees clockwise
    double x;          ///< left edge
    double y;          ///< upper edge
    double width;      ///< from the left edge
    double height;     ///< from the upper edge
    const char* text;  ///< may be absent
} qv_card_field;
/// How many fields were recognised; only for requests that wanted no note.
QV_C_API size_t qv_response_card_field_count(const qv_response* response);
/// Fills the structure; 0 when there is no such field, or the structure's size is too small.
QV_C_API int32_t qv_response_card_field(const qv_response* response, size_t index, qv_card_field* field);

/// What a picture is that a note refers to.
enum { QV_RESOURCE_CARD = 1, QV_RESOURCE_AVATAR = 2, QV_RESOURCE_PLACEHOLDER = 3 };
/// A picture that a note refers to by its hash, for the host to keep beside the note.
typedef struct qv_resource {
    size_t size;        ///< `sizeof(qv_resource)`
    int32_t kind;       ///< `QV_RESOURCE_…`
    const char* hash;   ///< as in the note
    const char* type;   ///< the MIME type that the note gives
    const void* bytes;  ///< the encoded picture; as long as the handle
    size_t length;      ///< how many bytes
} qv_resource;
/// How many pictures the note refers to.
QV_C_API size_t qv_response_resource_count(const qv_response* response);
/// Fills the structure; 0 when there is no such picture, or the structure's size is too small.
QV_C_API int32_t qv_response_resource(const qv_response* response, size_t index, qv_resource* resource);
/// @}

/// @name A search
/// @{

/// Gets the search's one outcome, which is the host's to release, on the main thread.
typedef void (*qv_search_completion)(qv_search_result* result, void* user_data);
/// Looks the person up by the card's first e-mail address, beginning with the main thread's next work. Fails when the
/// response has no contact. A second search for the same note replaces the first: both completions get the one outcome.
QV_C_API qv_status qv_search_start(const qv_response* response, qv_search_completion completion, void* user_data,
                                   qv_release_function release, qv_error** error);

/// What was found.
enum {
    QV_SEARCH_NOT_FOUND = 0,  ///< nobody, or a profile with neither page: see `qv_search_result_has_profile`
    QV_SEARCH_LINKEDIN = 1,
    QV_SEARCH_FACEBOOK = 2,
    QV_SEARCH_LINKEDIN_AND_FACEBOOK = 3,
    QV_SEARCH_TIMED_OUT = 4
};
/// Lets the result go.
QV_C_API void qv_search_result_release(qv_search_result* result);
/// `QV_SEARCH_…`
QV_C_API int32_t qv_search_result_type(const qv_search_result* result);
/// Whether a profile was found and merged into the contact.
QV_C_API int32_t qv_search_result_has_profile(const qv_search_result* result);
/// The identifier of the note that the search is for.
QV_C_API const char* qv_search_result_note_uuid(const qv_search_result* result);
/// The note's new content; absent when no profile was found.
QV_C_API const char* qv_search_result_note(const qv_search_result* result);
/// How many fields the contact has now.
QV_C_API size_t qv_search_result_field_count(const qv_search_result* result);
/// As `qv_response_field`.
QV_C_API int32_t qv_search_result_field(const qv_search_result* result, size_t index, qv_field* field);
/// How many pictures the new note refers to.
QV_C_API size_t qv_search_result_resource_count(const qv_search_result* result);
/// As `qv_response_resource`.
QV_C_API int32_t qv_search_result_resource(const qv_search_result* result, size_t index, qv_resource* resource);
/// @}

/// @name An error
/// @{

/// Lets the error go.
QV_C_API void qv_error_release(qv_error* error);
/// Who says it: `QV_C_ERROR_DOMAIN`, "kQVCardProcessingErrorDomain", or whoever is underlying.
QV_C_API const char* qv_error_domain(const qv_error* error);
/// What, in that domain. Of card processing: 1 no server address, 2 connection failed, 3 unreadable answer, 4 answer
/// that is not well formed.
QV_C_API int64_t qv_error_code(const qv_error* error);
/// In words; absent when there are none.
QV_C_API const char* qv_error_message(const qv_error* error);
/// The error that caused this one, a handle of its own; null when there is none.
QV_C_API qv_error* qv_error_underlying(const qv_error* error);
/// @}

#ifdef __cplusplus
}
#endif

#endif
