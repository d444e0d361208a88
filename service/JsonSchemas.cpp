// SPDX-License-Identifier: MIT
#include "JsonSchemas.h"

#include <initializer_list>

namespace
{
constexpr char kSchemaParameters[] = R"({
"path":{"name":"path","in":"query","schema":{"type":"string"},
 "description":"Way from the root, such as Vertical/Channel[1]/State; the root itself when left out"},
"depth":{"name":"depth","in":"query","schema":{"type":"integer","minimum":0},
 "description":"Levels of members; all when left out"},
"detail":{"name":"detail","in":"query","schema":{"enum":["state","full"]},
 "description":"full adds what seldom changes: meaning, default, names, values"},
"steps":{"name":"steps","in":"query","schema":{"type":"integer","minimum":1,"maximum":100},
 "description":"How many; one when left out"},
"format":{"name":"format","in":"query","required":true,"schema":{"enum":["xml","csv"]},
 "description":"Format of the file"}})";

/** Values: whole numbers beyond 2^53 are texts, numbers that are not finite are null. */
constexpr char kSchemaValue[] = R"({"type":["number","string","null"],
 "description":"Whole numbers beyond 9007199254740991 are texts, what is no finite number is null"})";

constexpr char kSchemaAvailability[] = R"({"enum":["available","read only","not available"]})";

#define KW_HEAD                                                                                    \
    R"("path":{"type":"string"},"availability":{"$ref":"#/components/schemas/Availability"},)"     \
    R"("name":{"type":"string"},"meaning":{"type":"string"},)"                                     \
    R"("remote":{"type":"string","description":"Its word in a header of remote control"},)"        \
    R"("saved":{"type":"array","items":{"enum":["settings","system"]}})"
#define KW_VALUE R"({"$ref":"#/components/schemas/Value"})"
#define KW_TEXT R"({"type":"string"})"
#define KW_TEXTS R"({"type":"array","items":)" KW_TEXT "}"
#define KW_FLAG R"({"type":"boolean"})"
#define KW_LIMITS                                                                                  \
    R"("minimum":)" KW_VALUE R"(,"maximum":)" KW_VALUE R"(,"step":)" KW_VALUE                      \
    R"(,"selectable":{"type":"array","items":)" KW_VALUE                                           \
    R"(,"description":"What can be selected now"},"form":)" KW_TEXT                                \
    R"(,"maximumLength":{"type":"integer"},"unit":)" KW_TEXT

constexpr char kSchemaProperty[] =
    R"({"type":"object","additionalProperties":false,"required":["path","kind","type","value","text",)"
    R"("shown","unit","result","valid","secret","availability","minimum","maximum","step","selectable"],)"
    R"("properties":{"kind":{"const":"property"},"type":)" KW_TEXT R"(,"value":)" KW_VALUE
    R"(,"text":{"type":"string","description":"As the tree and its files write it"},)"
    R"("shown":{"type":"string","description":"As a user reads it, such as 1.5 MHz"},)"
    R"("result":)" KW_FLAG R"(,"valid":)" KW_FLAG R"(,"secret":)" KW_FLAG R"(,"default":)" KW_VALUE
    R"(,"isDefault":)" KW_FLAG R"(,"userValue":)" KW_VALUE
    R"(,"folder":{"type":"string","description":"Of a file's name: below that of settings"},)"
    R"("openExtensions":)" KW_TEXTS R"(,"saveExtensions":)" KW_TEXTS
    R"(,"format":{"enum":["hex","binary"],"description":"How to show a bit pattern"})"
    R"(,"values":{"type":"array","items":{"type":"object","additionalProperties":false,)"
    R"("required":["value","shown","remote","selectable"],"properties":{"value":)" KW_TEXT
    R"(,"shown":)" KW_TEXT R"(,"remote":)" KW_TEXT R"(,"selectable":)" KW_FLAG "}}}," KW_LIMITS
    "," KW_HEAD "}}";

constexpr char kSchemaAction[] =
    R"({"type":"object","additionalProperties":false,"required":["path","kind","availability"],)"
    R"("properties":{"kind":{"enum":["function","operation"]},)" KW_HEAD "}}";

constexpr char kSchemaGroup[] =
    R"({"type":"object","additionalProperties":false,"required":["path","kind","availability"],)"
    R"("properties":{"kind":{"enum":["group","array","map"]},"count":{"type":"integer"},)"
    R"("maximumCount":{"type":"integer"},"dynamic":)" KW_FLAG R"(,"active":)" KW_TEXT
    R"(,"properties":{"type":"object","additionalProperties":{"$ref":"#/components/schemas/Property"}},)"
    R"("actions":{"type":"object","additionalProperties":{"$ref":"#/components/schemas/Action"}},)"
    R"("groups":{"type":"object","additionalProperties":{"$ref":"#/components/schemas/Group"}},)"
    R"("items":{"type":"array","items":{"$ref":"#/components/schemas/Group"}},)" KW_HEAD "}}";

constexpr char kSchemaNode[] = R"({"oneOf":[{"$ref":"#/components/schemas/Property"},
 {"$ref":"#/components/schemas/Group"},{"$ref":"#/components/schemas/Action"}]})";

#define KW_CODE                                                                                    \
    R"("code":{"type":"integer","description":"0 and 1 are taken, all others refused"},)"          \
    R"("name":)" KW_TEXT R"(,"text":)" KW_TEXT R"(,"detail":)" KW_TEXT

constexpr char kSchemaCode[] =
    R"({"type":"object","additionalProperties":false,"required":["code","name","text"],)"
    R"("properties":{)" KW_CODE "}}";

constexpr char kSchemaReport[] =
    R"({"type":"object","additionalProperties":false,"required":["path","code","name","text"],)"
    R"("properties":{"path":)" KW_TEXT R"(,"form":)" KW_TEXT
    R"(,"maximumLength":{"type":"integer"},"now":{"$ref":"#/components/schemas/Property"},)" KW_CODE
    "}}";

constexpr char kSchemaWritten[] =
    R"({"type":"object","additionalProperties":false,"required":["code","name","text","kept","writes"],)"
    R"("properties":{"kept":)" KW_FLAG
    R"(,"writes":{"type":"array","items":{"$ref":"#/components/schemas/Report"}},)" KW_CODE "}}";

constexpr char kSchemaWrittenOrRefused[] = R"({"oneOf":[{"$ref":"#/components/schemas/Written"},
 {"$ref":"#/components/schemas/Code"}]})";

constexpr char kSchemaTried[] =
    R"({"type":"object","additionalProperties":false,)"
    R"("required":["code","name","text","writes","changes","unlike"],)"
    R"("properties":{"writes":{"type":"array","items":{"$ref":"#/components/schemas/Report"}},)"
    R"("unlike":{"type":"array","items":)" KW_TEXT
    R"(,"description":"Nodes in which the copy differed from the tree"},)"
    R"("changes":{"type":"array","items":{"$ref":"#/components/schemas/Change"}},)" KW_CODE "}}";

constexpr char kSchemaChange[] =
    R"({"type":"object","additionalProperties":false,"required":["path"],"properties":{)"
    R"("path":)" KW_TEXT R"(,"before":{"$ref":"#/components/schemas/Node"},)"
    R"("now":{"$ref":"#/components/schemas/Node"},"removed":)" KW_FLAG
    R"(,"by":{"type":"array","description":"Of a trial: the rows behind the change",)"
    R"("items":{"type":"object","additionalProperties":false,"required":["group","row","step"],)"
    R"("properties":{"group":)" KW_TEXT R"(,"row":{"type":"integer"},"step":)" KW_TEXT "}}}}}";

#define KW_CONTROL                                                                                 \
    R"("control":{"enum":["local","remote","local lockout"],)"                                     \
    R"("description":"With local lockout the local user can write nothing"})"

constexpr char kSchemaSubscribe[] =
    R"({"type":"object","required":["subscribe"],"properties":{)"
    R"("subscribe":{"type":"array","maxItems":64,"items":)" KW_TEXT
    R"(,"description":"Paths of nodes, each with all that is below it; empty for none"},)"
    R"("stream":{"type":"string","description":"To go on where another connection stopped"},)"
    R"("number":{"type":"integer","description":"The last that it has seen"}}})";

constexpr char kSchemaStanding[] =
    R"({"type":"object","additionalProperties":false,)"
    R"("required":["stream","number","subscribed","resync","control"],"properties":{"stream":)" KW_TEXT
    R"(,"number":{"type":"integer"},"subscribed":{"type":"array","items":)" KW_TEXT
    R"(},"resync":{"type":"boolean","description":)"
    R"("Changes were missed: the tree must be read again"},)" KW_CONTROL "}}";

constexpr char kSchemaChanges[] =
    R"({"type":"object","additionalProperties":false,"required":["number","changes"],)"
    R"("properties":{"number":{"type":"integer"},)"
    R"("changes":{"type":"array","items":{"$ref":"#/components/schemas/Change"}},)" KW_CONTROL "}}";

#define KW_NUMBER R"({"type":["number","null"]})"
#define KW_WINDOW                                                                                   \
    R"({"type":"object","required":["columns"],"properties":{)"                                     \
    R"("columns":{"type":"integer","minimum":1,"maximum":4096},"from":{"type":"number",)"           \
    R"("description":"s against the trigger, of a spectrum Hz; the screen's edge when left out"},)" \
    R"("to":{"type":"number"}}})"

constexpr char kSchemaWaveWish[] =
    R"({"type":"object","properties":{"traces":)" KW_WINDOW R"(,"spectrum":)" KW_WINDOW "}}";

constexpr char kSchemaWaveStanding[] =
    R"({"type":"object","additionalProperties":false,"required":["traces","spectrum"],)"
    R"("properties":{"traces":{"type":"boolean","description":"There is an acquisition to draw"},)"
    R"("spectrum":)" KW_FLAG "}}";

#define KW_STRETCH                                                                                 \
    R"("from":)" KW_NUMBER R"(,"to":)" KW_NUMBER R"(,"columns":{"type":"integer"},)"               \
    R"("left":{"type":"number","description":"Edge of the screen"},"right":)" KW_NUMBER

#define KW_BEGIN                                                                                   \
    R"("name":)" KW_TEXT R"(,"unit":)" KW_TEXT R"(,"begin":{"type":"integer","description":)"      \
    R"("Its first number behind the head; two for each column, lowest and highest value"})"

constexpr char kSchemaWavePicture[] =
    R"({"type":"object","additionalProperties":false,"properties":{)"
    R"("record":{"type":"object","properties":{)" KW_STRETCH
    R"(,"divisions":{"type":"integer"},"number":{"type":"integer","description":"0: no record"},)"
    R"("time":{"type":"string","description":"Of the trigger, ns since 1970-01-01 UTC"},)"
    R"("mask":{"enum":["not tested","passed","failed"]},"traces":{"type":"array","items":)"
    R"({"type":"object","properties":{"kind":{"enum":["curve","lines"]},)"
    R"("bottom":{"type":"number","description":"Level at the lower edge of the screen"},)"
    R"("top":)" KW_NUMBER R"(,"above":)" KW_FLAG R"(,"below":)" KW_FLAG "," KW_BEGIN "}}}}},"
    R"("spectrum":{"type":"object","properties":{)" KW_STRETCH R"(,"bottom":)" KW_NUMBER
    R"(,"top":)" KW_NUMBER
    R"(,"traces":{"type":"array","items":{"type":"object","properties":{)" KW_BEGIN "}}}}}}}";

#define KW_MASK_LINE                                                                               \
    R"({"type":"array","description":"Pieces of [time in s, level]","items":{"type":"array",)"     \
    R"("items":{"type":"array","items":)" KW_NUMBER "}}}"

constexpr char kSchemaWaveMasks[] =
    R"({"type":"object","additionalProperties":false,"required":["masks"],"properties":{)"
    R"("masks":{"type":"array","items":{"type":"object","properties":{"name":)" KW_TEXT
    R"(,"tested":)" KW_FLAG R"(,"upper":)" KW_MASK_LINE R"(,"lower":)" KW_MASK_LINE "}}}}}";

constexpr char kSchemaWrite[] =
    R"({"type":"object","additionalProperties":false,"required":["path"],"minProperties":2,)"
    R"("maxProperties":2,"properties":{"path":)" KW_TEXT
    R"(,"value":{"type":["number","string","boolean"],"description":)"
    R"("A number in the property's unit, or a text as a user writes it, such as 1.5 MHz"},)"
    R"("default":{"const":true},"steps":{"type":"integer"}}})";

#define KW_WRITES                                                                                  \
    R"("writes":{"type":"array","minItems":1,"maxItems":256,)"                                     \
    R"("items":{"$ref":"#/components/schemas/Write"}})"

constexpr char kSchemaWrites[] =
    R"({"type":"object","required":["writes"],"properties":{)" KW_WRITES
    R"(,"together":{"type":"boolean","default":true},"text":{"type":"string",)"
    R"("description":"Name of the step for undo"}}})";

constexpr char kSchemaTrial[] =
    R"({"type":"object","required":["writes"],"properties":{)" KW_WRITES "}}";

constexpr char kSchemaItemChange[] =
    R"({"type":"object","required":["path","do"],"properties":{"path":)" KW_TEXT
    R"(,"do":{"enum":["insert","remove","rename","copy","move","activate"]},)"
    R"("key":{"type":"string","description":"Index in arrays, name in maps"},"to":)" KW_TEXT "}}";

constexpr char kSchemaControl[] =
    R"({"type":"object","additionalProperties":false,"required":["control","readOnly"],)"
    R"("properties":{"readOnly":{"type":"boolean","description":"The service writes nothing"},)" KW_CONTROL
    "}}";

constexpr char kSchemaFiles[] =
    R"({"type":"object","additionalProperties":false,"required":["folder","files"],)"
    R"("properties":{"folder":)" KW_TEXT R"(,"files":)" KW_TEXTS "}}";

constexpr char kSchemaHistory[] =
    R"({"type":"object","additionalProperties":false,"required":["canUndo","undo",)"
    R"("canRedo","redo","undoSteps","redoSteps"],"properties":{"canUndo":)" KW_FLAG
    R"(,"undo":)" KW_TEXT R"(,"canRedo":)" KW_FLAG R"(,"redo":)" KW_TEXT R"(,"undoSteps":)" KW_TEXTS
    R"(,"redoSteps":)" KW_TEXTS "}}";

constexpr char kSchemaRow[] =
    R"({"type":"object","additionalProperties":false,)"
    R"("required":["group","row","when","word","sources","what","steps"],"properties":{)"
    R"("group":)" KW_TEXT R"(,"row":{"type":"integer"},"when":)" KW_TEXT R"(,"word":)" KW_TEXT
    R"(,"what":)" KW_TEXT R"(,"sources":{"type":"array","items":)" KW_TEXT
    R"(},"steps":{"type":"array","items":)" KW_TEXT "}}}";

#define KW_ROWS R"({"type":"array","items":{"$ref":"#/components/schemas/Row"}})"

constexpr char kSchemaCouplings[] =
    R"({"type":"object","required":["rows"],"properties":{"rows":)" KW_ROWS "}}";

constexpr char kSchemaReasons[] =
    R"({"type":"object","required":["node","starts","rows"],"properties":{)"
    R"("node":{"$ref":"#/components/schemas/Node"},"starts":)" KW_ROWS R"(,"rows":)" KW_ROWS "}}";

constexpr char kSchemaPath[] =
    R"({"type":"object","required":["path"],"properties":{"path":)" KW_TEXT "}}";
constexpr char kSchemaPreset[] = R"({"type":"object","properties":{"factory":)" KW_FLAG "}}";
constexpr char kSchemaFile[] =
    R"({"type":"object","required":["file"],"properties":{"file":{"type":"string",)"
    R"("description":"A name without a path that ends in .xml or .csv"}}})";
constexpr char kSchemaSettings[] =
    R"({"type":"object","additionalProperties":false,"required":["settings"],)"
    R"("properties":{"settings":)" KW_TEXT "}}";
constexpr char kSchemaSettingsFile[] =
    R"({"type":"object","required":["settings","format"],"properties":{"settings":)" KW_TEXT
    R"(,"format":{"enum":["xml","csv"]},"text":{"type":"string",)"
    R"("description":"Names the step for undo; Recall where it is left out"}}})";
constexpr char kSchemaDescription[] = R"({"type":"object","required":["openapi","paths"]})";

struct t_Schema
{
    const char* name;
    const char* json;
};
} // namespace

QByteArray NJson::Components()
{
    QByteArray schemas;
    for (const t_Schema& schema :
         std::initializer_list<t_Schema>{{"Value", kSchemaValue},
                                         {"Availability", kSchemaAvailability},
                                         {"Property", kSchemaProperty},
                                         {"Action", kSchemaAction},
                                         {"Group", kSchemaGroup},
                                         {"Node", kSchemaNode},
                                         {"Code", kSchemaCode},
                                         {"Report", kSchemaReport},
                                         {"Written", kSchemaWritten},
                                         {"WrittenOrRefused", kSchemaWrittenOrRefused},
                                         {"Tried", kSchemaTried},
                                         {"Change", kSchemaChange},
                                         {"Subscribe", kSchemaSubscribe},
                                         {"Standing", kSchemaStanding},
                                         {"Changes", kSchemaChanges},
                                         {"WaveWish", kSchemaWaveWish},
                                         {"WaveStanding", kSchemaWaveStanding},
                                         {"WavePicture", kSchemaWavePicture},
                                         {"WaveMasks", kSchemaWaveMasks},
                                         {"Write", kSchemaWrite},
                                         {"Writes", kSchemaWrites},
                                         {"Trial", kSchemaTrial},
                                         {"ItemChange", kSchemaItemChange},
                                         {"Control", kSchemaControl},
                                         {"Files", kSchemaFiles},
                                         {"History", kSchemaHistory},
                                         {"Row", kSchemaRow},
                                         {"Couplings", kSchemaCouplings},
                                         {"Reasons", kSchemaReasons},
                                         {"Path", kSchemaPath},
                                         {"Preset", kSchemaPreset},
                                         {"File", kSchemaFile},
                                         {"Settings", kSchemaSettings},
                                         {"SettingsFile", kSchemaSettingsFile},
                                         {"Description", kSchemaDescription}})
    {
        schemas +=
            (schemas.isEmpty() ? "\"" : ",\"") + QByteArray(schema.name) + "\":" + schema.json;
    }
    return "{\"parameters\":" + QByteArray(kSchemaParameters) + ",\"schemas\":{" + schemas + "}}";
}
