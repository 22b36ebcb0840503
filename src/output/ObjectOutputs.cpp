#include "output/ObjectOutputs.h"

namespace trident {

void ObjectOutputs::StartPass(bool finalPass) {
    pWriting = finalPass && (pWanted.Srec || pWanted.Hex || pWanted.Loader);
    pRecords.SetEnabled(finalPass && pWanted.Srec, finalPass && pWanted.Hex);
    pLoader.SetEnabled(finalPass && pWanted.Loader);
    pRecords.Restart(0);
    pRecords.StartText();
    pLoader.StartPass();
}

void ObjectOutputs::Restart(std::uint16_t address) {
    pRecords.Restart(address);
    pLoader.Restart(address);
}

void ObjectOutputs::WriteAll(std::uint32_t whole, int width) {
    pRecords.WriteBits(whole, width);
    pLoader.WriteBits(whole, width);
}

void ObjectOutputs::Finish(std::uint16_t startAddress) {
    pRecords.Finish(startAddress);
    pLoader.Finish();
}

void ObjectOutputs::Clear() {
    pWriting = false;
    pRecords.Clear();
    pLoader.Clear();
}

} // namespace trident
