#include "output/ObjectOutputs.h"

namespace trident {

void ObjectOutputs::StartPass(bool finalPass) {
    pSrec.SetEnabled(finalPass && pWanted.Srec);
    pHex.SetEnabled(finalPass && pWanted.Hex);
    pLoader.SetEnabled(finalPass && pWanted.Loader);
    pSrec.Restart(0);
    pHex.Restart(0);
}

void ObjectOutputs::Restart(std::uint16_t address) {
    pSrec.Restart(address);
    pHex.Restart(address);
    pLoader.Restart(address);
}

void ObjectOutputs::WriteBits(std::uint32_t whole, int width) {
    pSrec.WriteBits(whole, width);
    pHex.WriteBits(whole, width);
    pLoader.WriteBits(whole, width);
}

void ObjectOutputs::Finish(std::uint16_t startAddress) {
    pSrec.Finish(startAddress);
    pHex.Finish(startAddress);
    pLoader.Finish();
}

void ObjectOutputs::Clear() {
    pSrec.Clear();
    pHex.Clear();
    pLoader.Clear();
}

} // namespace trident
