#include "FuzzTarget.h"

#include "media/StreamReader.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
StreamState StateOf(const QByteArray &content, StreamFacts &facts)
{
    InputFile file;
    Require(file.Open(PutFile(u"song.mp3"_s, content)), "the input is opened");
    const StreamState state = ReadStream(file, facts);
    Require(state != StreamState::Unreadable, "a file on a disk can be read");
    if (state == StreamState::Known) {
        Require(facts.First.Layer >= 1 && facts.First.Layer <= 3 && facts.First.SampleRate >= 8000, "a stream's kind");
        Require(std::isfinite(facts.Seconds) && facts.Seconds >= 0, "a stream's length");
        Require(facts.Kilobits >= 0 && facts.Kilobits <= 2000, "a stream's rate");
    }
    return state;
}

void TakeStream(const QByteArray &input)
{
    StreamFacts facts;
    const StreamState state = StateOf(input, facts);
    // An empty tag in front is no part of the audio.
    StreamFacts behindTag;
    Require(StateOf(QByteArray("ID3\3\0\0\0\0\0\x0a", 10) + QByteArray(10, '\0') + input, behindTag) == state,
            "a tag in front leaves the state");
    Require(facts.Seconds == behindTag.Seconds && facts.Kilobits == behindTag.Kilobits &&
                facts.Variable == behindTag.Variable,
            "a tag in front leaves the stream");
    // Streams beyond 64 KB are not walked at once.
    if (input.size() >= 24)
        StateOf(input.repeated(80 * 1024 / input.size() + 1), facts);
}

const FuzzTarget target("stream", TakeStream);
} // namespace
