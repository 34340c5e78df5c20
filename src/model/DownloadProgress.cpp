#include "model/DownloadProgress.h"

#include "model/DownloadHost.h"
#include "model/NodeLink.h"
#include "shared/EventPump.h"

namespace fenrik {

void DownloadProgress::ClearCancel()
{
    if (mLink && mLink->host)
        mLink->host->setDidCancel(false);
}

void DownloadProgress::Begin(int total)
{
    if (mLink && mLink->host)
        mLink->host->pbProgressInit(total);
}

void DownloadProgress::Step(int steps)
{
    if (mLink && mLink->host)
        mLink->host->pbProgressUpdate(steps);
    ThrowIfCancelled();
}

void DownloadProgress::End()
{
    if (mLink && mLink->host)
        mLink->host->pbProgressEnd();
}

void DownloadProgress::Status(const QString& text)
{
    if (mLink && mLink->host && !Closing())
        mLink->host->ShowStatus(text);
}

void DownloadProgress::ShowBusyCursor(bool busy)
{
    if (mLink && mLink->host)
        mLink->host->ShowBusyCursor(busy);
}

void DownloadProgress::ThrowIfCancelled() const
{
    if (Closing() || (mLink && mLink->host && mLink->host->DidCancel()))
        throw DownloadEnded{DownloadEnded::Why::Cancelled};
}

bool DownloadProgress::Closing() const
{
    return mLink && mLink->pump.Stopped();
}

}  // namespace fenrik
