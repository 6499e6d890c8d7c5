#include "LongCut.h"

#include <cstdint>

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

std::string longFcpxml(int clips) {
    std::string spine;
    std::int64_t place = 86400;  // frames at 24000/1001 from 01:00:00:00
    for (int clip = 0; clip < clips; ++clip) {
        const std::int64_t length = 24 + clip % 37;
        const auto time = [](std::int64_t frames) {
            return std::to_string(frames * 1001) + "/24000s";
        };
        spine += "<asset-clip ref=\"r2\" offset=\"" + time(place) + "\" name=\"clip " +
                 std::to_string(clip + 1) + "\" start=\"0s\" duration=\"" + time(length) + "\">";
        if (clip % 20 == 0) {
            spine += "<title ref=\"r3\" lane=\"1\" offset=\"0s\" name=\"title\" duration=\"" +
                     time(length / 2) + "\"/>";
        }
        if (clip % 100 == 0) {
            spine += "<asset-clip ref=\"r2\" lane=\"-1\" offset=\"0s\" name=\"music\" duration=\"" +
                     time(length * 3) + "\"/>";
        }
        spine += "</asset-clip>\n";
        place += length;
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE fcpxml>\n"
           "<fcpxml version=\"1.10\"><resources>"
           "<format id=\"r1\" frameDuration=\"1001/24000s\" width=\"1920\" height=\"1080\"/>"
           "<asset id=\"r2\" name=\"A001C001\" start=\"0s\" duration=\"3600s\" format=\"r1\"/>"
           "<effect id=\"r3\" name=\"Basic Title\"/></resources><library><event name=\"e\">"
           "<project name=\"long\"><sequence format=\"r1\" tcStart=\"3600s\" "
           "tcFormat=\"NDF\"><spine>\n" +
           spine + "</spine></sequence></project></event></library></fcpxml>\n";
}

std::string longXmeml(int clips) {
    const std::string rate = "<rate><timebase>30</timebase><ntsc>TRUE</ntsc></rate>";
    std::string video;
    std::string titles;
    std::string audio;
    std::int64_t place = 0;
    for (int clip = 0; clip < clips; ++clip) {
        const std::int64_t length = 24 + clip % 37;
        const std::string item = "<clipitem id=\"c" + std::to_string(clip) + "\"><name>clip " +
                                 std::to_string(clip + 1) + "</name><duration>9000</duration>" +
                                 rate + "<start>" + std::to_string(place) + "</start><end>" +
                                 std::to_string(place + length) + "</end><in>0</in><out>" +
                                 std::to_string(length) + "</out><file id=\"f1\"/></clipitem>\n";
        video += item;
        if (clip % 20 == 0) titles += item;
        if (clip % 2 == 0) audio += item;
        place += length;
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE xmeml>\n<xmeml version=\"4\">"
           "<sequence id=\"s\"><name>long</name>" +
           rate + "<timecode>" + rate +
           "<string>01:00:00;00</string><frame>107892</frame><displayformat>DF</displayformat>"
           "</timecode><media><video><track>\n" +
           video + "</track><track>" + titles + "</track></video><audio><track>" + audio +
           "</track><track currentExplodedTrackIndex=\"1\">" + audio +
           "</track></audio></media></sequence></xmeml>\n";
}

}  // namespace vantrel::bench
