#include "pipe/PipeBodies.h"

namespace fenrik {

namespace {

/// Takes fields off a body, one after the other.
class Fields {
public:
    explicit Fields(std::string_view body) : mRest(body) {}

    std::string_view Take(std::size_t width)
    {
        const auto field = mRest.substr(0, width);
        mRest.remove_prefix(field.size());
        return field;
    }
    std::string Trimmed(std::size_t width) { return std::string(TrimmedPipeText(Take(width))); }
    std::int32_t Number() { return ReadPipeNumber(Take(4)); }
    [[nodiscard]] std::string Rest() const { return std::string(mRest); }

private:
    std::string_view mRest;
};

}  // namespace

std::string PipeLogon::Encode() const
{
    return std::string(kPipeNameWidth, '\0') + PipeField(logonID, kPipeNameWidth) + PipeField(kind, kPipeKindWidth) +
           PipeField(userName, kPipeNameWidth);
}

std::optional<PipeLogon> PipeLogon::Decode(std::string_view body)
{
    if (body.size() != kSize)
        return std::nullopt;
    Fields fields(body.substr(kPipeNameWidth));
    PipeLogon logon;
    logon.logonID = fields.Trimmed(kPipeNameWidth);
    logon.kind = fields.Trimmed(kPipeKindWidth);
    logon.userName = fields.Trimmed(kPipeNameWidth);
    return logon;
}

std::optional<PipeWelcome> PipeWelcome::Decode(std::string_view body)
{
    if (body.size() < 4)
        return std::nullopt;
    return PipeWelcome{ReadPipeNumber(body), std::string(body.substr(4))};
}

std::string PipeUserRecord::Encode() const
{
    return PipeNumber(clientID) + PipeField(clientIP, kPipeAddressWidth) + PipeField(userName, kPipeNameWidth) +
           PipeField(userFlags, kPipeFlagsWidth);
}

std::optional<std::vector<PipeUserRecord>> PipeUserRecord::DecodeList(std::string_view body)
{
    if (body.size() % kSize != 0)
        return std::nullopt;
    std::vector<PipeUserRecord> records;
    for (; !body.empty(); body.remove_prefix(kSize)) {
        Fields fields(body);
        PipeUserRecord record;
        record.clientID = fields.Number();
        record.clientIP = fields.Take(kPipeAddressWidth);
        record.userName = fields.Trimmed(kPipeNameWidth);
        record.userFlags = fields.Take(kPipeFlagsWidth);
        records.push_back(std::move(record));
    }
    return records;
}

std::optional<PipeNotice> PipeNotice::Decode(std::string_view body)
{
    if (body.size() < kLeastSize)
        return std::nullopt;
    Fields fields(body);
    PipeNotice notice;
    notice.clientID = fields.Number();
    notice.name = fields.Trimmed(kPipeNameWidth);
    notice.text = fields.Rest();
    return notice;
}

std::optional<PipeAccessReply> PipeAccessReply::Decode(std::string_view body)
{
    if (body.empty())
        return std::nullopt;
    return PipeAccessReply{(body[0] & 1) != 0, std::string(body.substr(1))};
}

}  // namespace fenrik
