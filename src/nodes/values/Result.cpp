#include "nodes/values/Result.h"

#include <algorithm>
#include <array>

namespace Nodes {

namespace {

struct ResultText
{
    Result::ResultType type;
    int code;
    const char *english;
    const char *russian;
};

constexpr std::array texts{
    ResultText{Result::Success, 0, "success", "Выполнено"},
    ResultText{Result::Failed, 1, "failed", "Ошибка выполнения"},
    ResultText{Result::NotFound, 404, "not found", "Не найдено"},
    ResultText{Result::InvalidArgument, 400, "invalid argument", "Недопустимое значение"},
    ResultText{Result::WrongType, 415, "wrong type", "Неверный тип значения"},
    ResultText{Result::OutOfRange, 416, "out of range", "Значение вне допустимых пределов"},
    ResultText{Result::AccessDenied, 1320, "access denied", "Недостаточно прав"},
    ResultText{Result::Refused, 403, "refused", "Отклонено"},
    ResultText{Result::NotConnected, 503, "not connected", "Нет связи с устройством"},
    ResultText{Result::Timeout, 504, "timeout", "Нет ответа за отведённое время"},
    ResultText{Result::DeviceError, 502, "device error", "Ошибка устройства"},
    ResultText{Result::ParseError, 422, "parse error", "Ошибка разбора данных"},
    ResultText{Result::StorageError, 507, "storage error", "Ошибка хранилища"},
    ResultText{Result::NotAvailable, 501, "not available", "Недоступно"},
    ResultText{Result::Cancelled, 499, "cancelled", "Отменено"},
    ResultText{Result::Duplicate, 409, "duplicate", "Уже существует"},
    ResultText{Result::LimitExceeded, 413, "limit exceeded", "Превышено ограничение"},
    ResultText{Result::Cycle, 508, "cycle", "Обнаружена циклическая ссылка"},
    ResultText{Result::AuthenticationFailed, 401, "authentication failed",
               "Неверное имя пользователя или пароль"},
    ResultText{Result::ReadOnly, 405, "read only", "Только для чтения"},
};

// Outcomes that their code tells more exactly than their type.
struct CodeText
{
    int code;
    const char *english; ///< null: as the type's
    const char *russian;
};

constexpr std::array codeTexts{
    CodeText{1317, nullptr, "Пользователь не найден"},
    CodeText{1318, nullptr, "Неверный пароль"},
    CodeText{1320, nullptr, "Недостаточно прав"},
    CodeText{1410, "a name must not be empty and has no '/'",
             "Имя узла не может быть пустым и содержать «/»"},
    CodeText{1411, "another child has that name",
             "Такое имя здесь уже есть у другого узла. Дайте другое имя."},
};

const CodeText *findCode(int code)
{
    const auto *found = std::find_if(codeTexts.begin(), codeTexts.end(),
                                     [code](const CodeText &text) { return text.code == code; });
    return found == codeTexts.end() ? nullptr : found;
}

const ResultText &textOf(Result::ResultType type)
{
    for (const ResultText &text : texts) {
        if (text.type == type)
            return text;
    }
    return texts[1];
}

} // namespace

Result::Result(ResultType type) : m_type(type) {}

Result::Result(ResultType type, std::string detail)
    : m_type(type), m_detail(std::make_shared<const std::string>(std::move(detail)))
{
}

int Result::GetCode() const
{
    return m_extraCode != 0 ? m_extraCode : textOf(m_type).code;
}

const std::string &Result::GetDetail() const
{
    static const std::string none;
    return m_detail ? *m_detail : none;
}

std::string Result::ToString() const
{
    const CodeText *exact = IsSuccess() ? nullptr : findCode(m_extraCode);
    std::string text = exact && exact->english ? exact->english : textOf(m_type).english;
    if (!IsSuccess())
        text += " (" + std::to_string(GetCode()) + ")";
    if (m_nodeId != 0)
        text += ", node " + std::to_string(m_nodeId);
    if (!GetDetail().empty())
        text += ": " + GetDetail();
    return text;
}

std::string Result::GetResultTranslated() const
{
    const CodeText *exact = IsSuccess() ? nullptr : findCode(m_extraCode);
    return exact ? exact->russian : textOf(m_type).russian;
}

bool Result::operator==(const Result &other) const
{
    return m_type == other.m_type && GetCode() == other.GetCode() && m_nodeId == other.m_nodeId;
}

} // namespace Nodes
