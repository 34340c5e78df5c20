#pragma once

#include "ScriptedNode.h"
#include "support/DatabaseFile.h"

#include <QTemporaryDir>

namespace fenrik {

inline const QString kCancelled = QStringLiteral("Data download cancelled due to user request.");
inline const QString kFailed = QStringLiteral("Data download cancelled due to communication error.");
inline const QString kQueriesDone = QStringLiteral("Node information successfully updated.");
inline const QString kMemoryDone = QStringLiteral("Node information succesfully updated.");

/// A download from a scripted node, by whichever road.
class NodeDownloadTest : public ScriptedNodeTest {
protected:
    void Read(bool names = true) { Node().ReadNode(QString(), nodes, names); }

    void ReadImage(const QByteArray& image)
    {
        const QString path = folderOfImages.filePath(QStringLiteral("Bus_Node 2.bin"));
        MakeFile(path, image);
        Node().ReadNode(path, nodes, true);
    }

    void ExpectFailure()
    {
        ASSERT_EQ(boxes.boxes.size(), 1u);
        EXPECT_EQ(boxes.boxes[0].title, QStringLiteral("Update Node Information"));
        EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Critical);
        EXPECT_EQ(boxes.boxes[0].text,
                  QStringLiteral("Diagnostics is having trouble communicating with the node.  Please check that your "
                                 "connection with the Transceiver is still good, and that the node is on and running "
                                 "normally."));
        EXPECT_EQ(window.LastStatus(), kFailed);
        ExpectEnded();
    }

    void ExpectEnded()
    {
        EXPECT_THAT(window.calls, testing::Contains("pbProgressEnd"));
        EXPECT_EQ(window.cursors, 0);
        EXPECT_THAT(errors.reports, testing::IsEmpty());
    }

    QTemporaryDir folderOfImages;
    std::uint8_t nodes = 0;
};

}  // namespace fenrik
