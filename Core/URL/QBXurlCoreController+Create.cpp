#include "QBXurlCoreController.h"
#include "XURLParameters.h"
#include "XurlReports.h"

#include <Foundation/DispatchQueue.h>
#include <Store/CurrentSyntax.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>

using namespace Qt::StringLiterals;

/// One creation on its way: through the queue of its own context, and back to the main queue.
struct QBXurlCoreController::Creation
{
    Parameters parameters;
    IACSuccessBlock success;
    IACFailureBlock failure;
    UpdateCreated updateInterface;
    int syntax = 0;
    std::shared_ptr<NSManagedObjectContext> context;

    // What came of it.
    QString identifier;
    QString title;
    NSError error;

    /// Makes the note and saves it into the main context.
    /// Queue: the context's.
    void run();

private:
    /// The note's text; nothing where the error is set.
    [[nodiscard]] std::optional<QString> makeText();
    [[nodiscard]] bool appendFile(QString &text);
    void fail(ErrorCode code, QLatin1StringView message) { error = NSError(message, static_cast<qint64>(code), {}); }
};

bool QBXurlCoreController::Creation::appendFile(QString &text)
{
    const QString file = parameters.value(u"file"_s);
    const QString filename = parameters.value(u"filename"_s);
    if (file.isEmpty() || filename.isEmpty()) {
        return true;
    }
    const auto data = dataFromBase64(file);
    if (!data) {
        fail(ErrorCode::Parameter, quib::kFileNotBase64);
        return false;
    }
    const auto marker = saveFileWithData(*data, filename, *context);
    if (!marker) {
        fail(ErrorCode::Internal, quib::kNotSaved);
        return false;
    }
    text += u"\n\n"_s + *marker;
    return true;
}

std::optional<QString> QBXurlCoreController::Creation::makeText()
{
    QString text;
    // 1. The title as a header.
    if (const QString heading = parameters.value(u"title"_s); !heading.isEmpty()) {
        text += u"# " % heading % u'\n';
    }
    // 2. The text. What is HTML, and says where it is from, must not go in as mere text.
    if (const QString body = parameters.value(u"text"_s); !body.isEmpty()) {
        if (parameters.value(u"type"_s) == u"html" && !parameters.value(u"url"_s).isEmpty()) {
            fail(ErrorCode::Internal, "Text of the type html is not supported"_L1);
            return std::nullopt;
        }
        text += body;
    }
    // 3. The file.
    if (!appendFile(text)) {
        return std::nullopt;
    }
    // 4. The tags, which alone are a note too.
    text = quib::textWithTags(text, parameters.value(u"tags"_s));
    // 5. Something must be there.
    if (text.isEmpty()) {
        fail(ErrorCode::Internal, "The resulting note is empty"_L1);
        return std::nullopt;
    }
    return text;
}

void QBXurlCoreController::Creation::run()
{
    const auto text = makeText();
    if (!text) {
        return;
    }
    // 6. The note, into the main context.
    const auto note = QBNote::noteWithText(*text, syntax, *context);
    if (quib::xurlPinNote(parameters)) {
        note->pin();
    }
    identifier = note->uniqueIdentifier();
    title = note->title();
    if (!context->save()) {
        fail(ErrorCode::Internal, quib::kNotSaved);
    }
}

void QBXurlCoreController::handleCreate(const Parameters &parameters, const IACSuccessBlock &success,
                                        const IACFailureBlock &failure, const UpdateCreated &updateInterface)
{
    const auto creation = std::make_shared<Creation>();
    creation->parameters = parameters;
    creation->success = success;
    creation->failure = failure;
    creation->updateInterface = updateInterface;
    creation->syntax = quib::currentSyntax();
    creation->context = m_stack.backgroundPrivateManagedObjectContext();
    ++m_pendingActions;
    creation->context->performBlock([creation, weak = std::weak_ptr(m_self)] {
        creation->run();
        quib::DispatchQueue::main()->async([creation, weak] {
            if (const auto self = weak.lock()) {
                (*self)->finishCreation(*creation);
            }
        });
    });
}

void QBXurlCoreController::finishCreation(const Creation &creation)
{
    --m_pendingActions;
    if (creation.error.isSet()) {
        if (creation.failure) {
            creation.failure(creation.error);
        }
        return;
    }
    // 7. Durable before anybody is told.
    if (!save(creation.failure)) {
        return;
    }
    if (creation.updateInterface) {
        creation.updateInterface(creation.identifier);
    }
    quib::reportSuccess(creation.success, {{u"identifier"_s, creation.identifier}, {u"title"_s, creation.title}});
}
