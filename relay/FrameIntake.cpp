#include "relay/FrameIntake.h"

namespace fenrik {

void FrameIntake::Work(User& user, Exchange& exchange, double now)
{
    using Found = PipeReader::Found;
    mHeld = false;
    while (!user.ended) {
        if (!MayGoOn(user, now)) {
            mHeld = mReader.Held() > 0;
            return;
        }
        switch (mReader.Next(mFrame)) {
        case Found::Nothing:
            return;
        case Found::Frame:
            mBudget.Spend(Exchange::Cost(mFrame));
            exchange.Handle(user, mFrame, now);
            break;
        case Found::BadPreamble:
            return exchange.RefuseFrame(user, "no frame begins where one should", now);
        case Found::BadLength:
            return exchange.RefuseFrame(user, "the length of a frame is negative or too great", now);
        }
    }
}

}  // namespace fenrik
