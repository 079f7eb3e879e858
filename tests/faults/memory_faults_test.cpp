// Every request of an import for memory is refused once, and all from there on.

#include "tests/faults/fault_run.h"

namespace kova_test {
namespace {

class MemoryFaults : public FaultTest {};

/// Returns how many requests there were to refuse.
long refuse_each(const Model &model, bool from_there_on) {
    long met = 0;
    for (bool was_met = true; was_met;) {
        expect_recovery(model, [&] {
            memory_faults() = {met + 1, from_there_on};
            const Import run = import(model);
            was_met = memory_faults().was_met();
            const Ending ending = expect_ending(model, run);
            EXPECT_EQ(ending == Ending::complete, !was_met);
            if (was_met && !testing::Test::HasFailure()) {
                EXPECT_EQ(run.notices.back().kind, ending == Ending::stopped
                                                       ? IMPORT_EXPORT_OUT_OF_MEMORY
                                                       : IMPORT_EXPORT_OPEN_FAILED);
            }
        });
        if (testing::Test::HasFailure()) {
            ADD_FAILURE() << "request " << met + 1;
            return met;
        }
        met += was_met ? 1 : 0;
    }
    return met;
}

TEST_P(MemoryFaults, EndTheImportAsPrescribed) {
    long requests = 0;
    expect_recovery(model(), [&] {
        memory_faults() = {};
        expect_fresh(model(), import(model()));
        requests = memory_faults().met;
        // the buffer of the file, and tables of most sections
        EXPECT_GT(requests, 11);
    });
    for (const bool from_there_on : {false, true}) {
        EXPECT_EQ(refuse_each(model(), from_there_on), requests);
        if (HasFailure())
            return;
    }
    tell(model(), "memory refused, once and from there on", 2 * requests);
}

INSTANTIATE_TEST_SUITE_P(Models, MemoryFaults, testing::Range(std::size_t{0}, model_names.size()),
                         model_name);

} // namespace
} // namespace kova_test
