#pragma once

#include "output/LoaderWriter.h"
#include "output/ObjectTexts.h"
#include "output/RecordWriter.h"

#include <cstdint>

namespace trident {

// The three object texts built while the final pass emits bytes: Motorola
// S-records, Intel HEX and the monitor loader text, fed in that order.
class ObjectOutputs {
  public:
    // The texts that the next final pass builds (all of them unless told).
    void Select(const ObjectTexts& wanted) { pWanted = wanted; }
    // Only the final pass writes, and only the selected texts. The record
    // formats start a new record at address 0 with every pass; the loader
    // text deliberately does not.
    void StartPass(bool finalPass);
    // The emission address jumped (org, reserved space).
    void Restart(std::uint16_t address);
    // An emitted value, reduced to its whole bits (WholeBits). Every value
    // of every pass comes here; only the final pass writes.
    void WriteBits(std::uint32_t whole, int width) {
        if (pWriting) WriteAll(whole, width);
    }
    // Closes the open records and writes the end records.
    void Finish(std::uint16_t startAddress);
    void Clear();
    void KeepColours(bool keep) {
        pRecords.KeepColours(keep);
        pLoader.KeepColours(keep);
    }

    void SetLoaderStyle(LoaderStyle style) { pLoader.SetStyle(style); }
    void SetStandardRecords(bool standard) { pRecords.SetStandardRecords(standard); }

    const ColouredText& Srec() const { return pRecords.Srec(); }
    const ColouredText& Hex() const { return pRecords.Hex(); }
    const ColouredText& Loader() const { return pLoader.Text(); }

  private:
    void WriteAll(std::uint32_t whole, int width);

    RecordWriter pRecords;
    LoaderWriter pLoader;
    ObjectTexts pWanted;
    // The pass under way writes at least one of the texts.
    bool pWriting = false;
};

} // namespace trident
