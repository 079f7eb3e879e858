/* The binary interface of the import utility, in plain C.
 *
 * A host loads the library, lets the user choose "import", and calls `importexport`. Everything
 * that the utility learns from the import file, asks or reports goes to the host library through
 * the entry points `host_call_0` .. `host_call_5`, which the host supplies. The data block
 * `IMPORT_EXPORT` below is the live state of the utility.
 *
 * The host names the import file in the 512 bytes of the command GFILENAME. On Linux they are the
 * path's bytes. On Windows they are taken as UTF-8 where they are valid UTF-8, else as text in the
 * active code page; the file is opened through the wide-character functions, and other programs may
 * go on to read, write or rename it.
 *
 * All calls must come from one thread. No exception leaves any of these functions. On Windows with
 * 32 bits they and the function for notices are cdecl, whatever the compiler's options. */
#ifndef KOVA_IMPORT_EXPORT_H
#define KOVA_IMPORT_EXPORT_H

/* NOLINTBEGIN(modernize-*): a C header */
#include <stddef.h>
#include <stdint.h>

#if defined(_WIN32)
#if defined(KOVA_IMPORT_BUILD)
#define KOVA_IMPORT_API __declspec(dllexport)
#else
#define KOVA_IMPORT_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define KOVA_IMPORT_API __attribute__((visibility("default")))
#else
#define KOVA_IMPORT_API
#endif

#if defined(_WIN32)
#define KOVA_IMPORT_CALL __cdecl
#else
#define KOVA_IMPORT_CALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* What a notice tells. */
enum import_export_notice_kind {
    IMPORT_EXPORT_READ_FAILED = 1, /* a read failed; the import stops at its section */
    IMPORT_EXPORT_OPEN_FAILED = 2, /* the import file cannot be opened, now or again */
    IMPORT_EXPORT_NOT_IMPORTED =
        4, /* a datum of the file has no counterpart in the current model */
    IMPORT_EXPORT_CONDITION_UNMET =
        5, /* a datum has a counterpart, but what it belongs to is not simulated */
    IMPORT_EXPORT_CONVERTED = 6,      /* a datum comes across with another value */
    IMPORT_EXPORT_CUT = 7,            /* a text comes across shortened */
    IMPORT_EXPORT_DEFAULTED = 8,      /* the file leaves a datum out; the host gets a default */
    IMPORT_EXPORT_PLACEHOLDER = 9,    /* the host gets a datum that stands for "none" */
    IMPORT_EXPORT_CALL_REFUSED = 10,  /* the host called the utility from inside a host command */
    IMPORT_EXPORT_OUT_OF_MEMORY = 11, /* the section or the import stops for want of memory */
    IMPORT_EXPORT_HOST_FAILED = 12,   /* the host ended a command with an exception */
    IMPORT_EXPORT_REPLACED = 13 /* one datum of the file takes the place of another, earlier one */
};

/* One thing that a person should know about an import. Texts are NUL-terminated and valid during
 * the call only; a text that does not apply is empty, a number that does not apply is 0. Text from
 * the file is handed on as its bytes. */
typedef struct import_export_notice {
    size_t size;              /* of this struct in the library; members may be added behind */
    int32_t kind;             /* enum import_export_notice_kind */
    int32_t section;          /* 1 .. 11, 0 outside the sections */
    const char *section_name; /* "segments" */
    const char *statement;    /* what was being read: "segment geometry" */
    int64_t statement_number; /* line counter: one more than the read statements so far */
    int64_t line;             /* physical line in the file, from 1 */
    int64_t column;           /* byte column in the line, from 1 */
    int64_t width;            /* bytes of the field or value, 0 at the end of a line */
    const char *field;        /* "bottom segment" */
    const char *expected;     /* "an integer" */
    const char *found;        /* what stood there, cut to a reasonable length */
    size_t found_length;      /* bytes of it; a file may hold NULs */
    const char *reason;       /* one sentence */
    const char *advice;       /* what can be done about it, where that is known */
    const char
        *line_text; /* the line around the field, without its end; cut to a reasonable length */
    size_t line_text_length;  /* bytes of it */
    int64_t line_text_column; /* byte column in the line at which line_text starts */
    int64_t number;     /* which one: the segment, system, field, function, parameter or constant */
    const char *path;   /* the file, in the bytes that the host gave */
    const char *name;   /* what the number is called: a time function, parameter or constant */
    size_t name_length; /* bytes of it */
} import_export_notice;

typedef void(KOVA_IMPORT_CALL *import_export_notice_function)(void *context,
                                                              const import_export_notice *notice);

/* The live state of the utility. Flags and options that a host writes take effect at once; counts
 * are taken when a section starts or reads them. Every import starts from cleared counts, flags and
 * options; `layout`, `notice` and `notice_context` are left alone. */
typedef struct import_export_data {
    int32_t report_tables; /* 1: the legacy time functions send a table instead of one line; cleared
                              by each import */
    int32_t layout;        /* number of this struct's layout, IMPORT_EXPORT_LAYOUT */
    int32_t import_error;  /* 1 after a section failed; later sections are skipped */
    int32_t line_counter;  /* read statements begun, from 1; stays at the largest value when it gets
                              there */
    int32_t model_type;    /* 11 eutrophication, 8 toxicant */
    int32_t file_version;  /* 3 or more: current format; else legacy */
    int32_t transport_only;       /* 1: only the network and its transport */
    int32_t index_segment_names;  /* 1: segment names get their number */
    int32_t system_count;         /* systems in the file */
    int32_t state_variable_count; /* systems that the host simulates (legacy format) */
    int32_t segment_count;
    int32_t flow_field_count;
    int32_t cbod_count;          /* 0 .. 3 */
    int32_t solids_count;        /* 0 .. 3 */
    int32_t phytoplankton_count; /* 0 .. 3 */
    int32_t tf5_present;         /* 1: the file gives solar radiation (legacy time function 5) */
    int32_t tf10_present;        /* 1: the file gives air temperature (legacy time function 10) */
    int32_t ammonia_present;     /* 1: the host simulates it; likewise below (legacy format) */
    int32_t nitrate_present;
    int32_t organic_nitrogen_present;
    int32_t inorganic_phosphorus_present;
    int32_t organic_phosphorus_present;
    int32_t inorganic_silica_present;
    int32_t organic_silica_present;
    int32_t oxygen_present;
    int32_t detrital_carbon_present;
    int32_t detrital_nitrogen_present;
    int32_t detrital_phosphorus_present;
    int32_t detrital_silica_present;
    int32_t total_detritus_present;
    int32_t salinity_present;
    int32_t benthic_algae_present;
    int32_t benthic_algae_nitrogen_present;
    int32_t benthic_algae_phosphorus_present;
    int32_t ph_present;
    int32_t alkalinity_present;
    import_export_notice_function
        notice;           /* called for every notice; null when the library is loaded */
    void *notice_context; /* handed back to it */
} import_export_data;

#define IMPORT_EXPORT_LAYOUT 1

extern KOVA_IMPORT_API import_export_data IMPORT_EXPORT;

/* Runs one import from the first question to the completion note. */
KOVA_IMPORT_API void KOVA_IMPORT_CALL importexport(void);

/* The information pages. `intro` empties the information pane first. */
KOVA_IMPORT_API void KOVA_IMPORT_CALL intro(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL version(void);

/* The sections of the legacy format. Outside an import they find no open file and report a read
 * error. */
KOVA_IMPORT_API void KOVA_IMPORT_CALL modelparam(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL segments(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL flowpath(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL flows(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL exchanges(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL boundary(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL loads(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL timefunctions(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL seg_parameters(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL constants(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL initial_conditions(void);

/* The sections of the current format. */
KOVA_IMPORT_API void KOVA_IMPORT_CALL modelparam_v2(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL segments_v2(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL flowpath_v2(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL flows_v2(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL exchanges_v2(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL boundary_v2(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL loads_v2(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL timefunctions_v2(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL seg_parameters_v2(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL constants_v2(void);
KOVA_IMPORT_API void KOVA_IMPORT_CALL initial_conditions_v2(void);

#ifdef __cplusplus
}
#endif
/* NOLINTEND(modernize-*) */

#endif
