#include "host/viewer/foreign_objects.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "host/core/attribute_model.h"
#include "host/core/suite_table.h"

namespace sorrel {

namespace {

/// What an object holds: nothing a C++ runtime could follow as a pointer.
constexpr unsigned char kObjectByte = 0xA5;
constexpr std::size_t kObjectBytes = 64;

struct ForeignObject {
    std::array<unsigned char, kObjectBytes> bytes;
};

/// The plugin handle: the object's address first, as every handle has it.
struct ForeignRecord {
    ForeignObject* object = nullptr;
    void* reserved = nullptr;
};

void* createEntry(void*) {
    auto* object = new ForeignObject;
    object->bytes.fill(kObjectByte);
    return new ForeignRecord{object};
}

void destroyEntry(void* handle) {
    auto* record = static_cast<ForeignRecord*>(handle);
    if (record == nullptr) return;
    for (const unsigned char byte : record->object->bytes) {
        if (byte != kObjectByte) {
            std::fprintf(stderr, "foreign object: written by someone else\n");
            std::abort();
        }
    }
    delete record->object;
    delete record;
}

// Given-over references are the object's to drop.
void dropGiven(void* attribute) {
    if (attribute != nullptr)
        AttributeModel::instance().release(static_cast<AttrHandle>(attribute));
}

void doNothing(void*) {}
void* answerNothing(void*, std::uint64_t) { return nullptr; }
void setOptionEntry(void*, std::uint64_t, void* value) { dropGiven(value); }
std::uint8_t answerFalse(void*) { return 0; }

// ---- layer ----
void resizeEntry(void*, std::int32_t, std::int32_t) {}
void stateChangedEntry(void*, std::uint8_t, void*) {}
std::int32_t eventEntry(void*, void* event) {
    dropGiven(event);
    return 0;
}
void pickerDrawEntry(void*, std::int32_t, std::int32_t, std::int32_t, std::int32_t, void*) {}
std::int32_t pickEntry(void*, std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                       void**, float*) {
    return 0;
}

// ---- component ----
std::uint8_t locationEventEntry(void*, const void*, std::uint8_t) { return 0; }
void selectedEntry(void*, const char* const*, std::int64_t) {}
void* queryEntry(void*, const char*) { return nullptr; }

}  // namespace

void* const* foreignLayerSuite() {
    static const SuiteTable table = [] {
        SuiteTable t("foreign ViewportLayerPlugin");
        t.set(0, &createEntry)
            .set(1, &destroyEntry)
            .set(2, &doNothing)
            .set(3, &doNothing)
            .set(4, &eventEntry)
            .set(5, &doNothing)
            .set(6, &resizeEntry)
            .set(7, &stateChangedEntry)
            .set(8, &doNothing)
            .set(9, &doNothing)
            .set(10, &setOptionEntry)
            .set(11, &answerNothing)
            .set(12, &pickerDrawEntry)
            .set(13, &answerFalse)
            .set(14, &pickEntry);
        return t;
    }();
    return table.data();
}

void* const* foreignComponentSuite() {
    // Position 11 holds a number that only the host reads; it stays a trap here.
    static const SuiteTable table = [] {
        SuiteTable t("foreign ViewerDelegateComponentPlugin");
        t.set(0, &createEntry)
            .set(1, &destroyEntry)
            .set(2, &locationEventEntry)
            .set(3, &selectedEntry)
            .set(4, &setOptionEntry)
            .set(5, &answerNothing)
            .set(6, &doNothing)
            .set(7, &doNothing)
            .set(8, &answerFalse)
            .set(9, &queryEntry)
            .set(10, &queryEntry)
            .set(12, &locationEventEntry)
            .set(13, &selectedEntry);
        return t;
    }();
    return table.data();
}

}  // namespace sorrel
