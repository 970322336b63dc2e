#pragma once

#include "file_operations_parts.h"

#include <QByteArray>
#include <QObject>

#include <memory>
#include <sys/resource.h>

/* What the tests of copying and pasting share. They run in the sandbox. */
namespace TestSupport {

/** While it lives no process resource of that kind goes beyond the limit. */
class Limit
{
public:
    Limit(__rlimit_resource what, rlim_t value)
        : resource(what)
    {
        getrlimit(resource, &before);
        const rlimit lower = {value, before.rlim_max};
        setrlimit(resource, &lower);
    }
    ~Limit() { setrlimit(resource, &before); }
    Q_DISABLE_COPY(Limit)

private:
    __rlimit_resource resource;
    rlimit before = {};
};

/**
 * The base of a test class: a panel that shows the folders "from" and "to", for each test,
 * and a working directory into which nothing may be written.
 */
class FileClipboardFixture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareScratchMachine(); }
    void init();
    void cleanup();

protected:
    void copy(const QString &path) { emit panel->parts.list->copyIndex(panel->index(path)); }
    void paste(const QString &path) { emit panel->parts.list->pasteAtIndex(panel->index(path)); }
    /** Whether the list offers to paste. */
    bool canPaste() const;
    /** Copies a file "from/report.cdp" of that content. */
    void fill(const QByteArray &content = "content");

    std::unique_ptr<PanelUnderTest> panel;
};

} // namespace TestSupport
