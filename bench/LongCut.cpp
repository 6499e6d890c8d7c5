#include "LongCut.h"

#include "Calc.h"

namespace vantrel::bench {

std::string longCut(int events) {
    Calc writer;
    writer.setFps(DisplayState29drop);
    writer.setTimecodeNotation(TimecodeNotation::Smpte);
    std::string cut = "TITLE: LONG CUT\r\nFCM: DROP FRAME\r\n";
    double record = 107892.0;
    for (int event = 0; event < events; ++event) {
        const double length = 24.0 + event % 37;
        if (event % 50 == 49) record += 12;
        const bool music = event % 100 == 99;
        const double in = music ? record - 40 : record;
        cut += std::to_string(event + 1) +
               (music ? "  MUSIC01 A     C        " : "  A001C001 V     C        ") +
               "00:00:00;00 00:00:01;00 " + writer.stringFromFramecount(in) + " " +
               writer.stringFromFramecount(in + length) + "\r\n* FROM CLIP NAME:  A001C001.mov\r\n";
        if (!music) record += length;
    }
    return cut;
}

}  // namespace vantrel::bench
