#include "workbench/repository/store.h"

#include <fmt/format.h>

#include <filesystem>

#include "platform/error.h"
#include "platform/objectkey.h"
#include "workbench/repository/foreignchanges.h"
#include "workbench/repository/sqliteconnection.h"
#include "workbench/repository/storedatabase.h"
#include "workbench/repository/storefetch.h"
#include "workbench/repository/storelayout.h"
#include "workbench/repository/storeobject.h"
#include "workbench/repository/storesession.h"

namespace qmrules::workbench::repository {

using platform::Error;

namespace {

class OpenCommand final : public platform::CommandScope {
 public:
  OpenCommand(StoreSession& session, std::string_view name) : session_(session) { session_.EnterCommand(name); }
  ~OpenCommand() override { session_.LeaveCommand(); }
  OpenCommand(const OpenCommand&) = delete;
  OpenCommand& operator=(const OpenCommand&) = delete;

 private:
  StoreSession& session_;
};

class OpenTransaction final : public platform::Transaction {
 public:
  explicit OpenTransaction(StoreSession& session) : session_(session) { session_.EnterTransaction(); }
  ~OpenTransaction() override {
    if (isOpen_) session_.LeaveTransaction();
  }
  OpenTransaction(const OpenTransaction&) = delete;
  OpenTransaction& operator=(const OpenTransaction&) = delete;
  void Commit() override {
    if (!isOpen_) throw Error("A transaction is committed once.");
    isOpen_ = false;
    session_.CommitTransaction();
  }

 private:
  StoreSession& session_;
  bool isOpen_ = true;
};

class Store final : public platform::Repository {
 public:
  Store(std::unique_ptr<Connection> connection, std::unique_ptr<StoreSchema> schema, const platform::Clock& clock,
        const std::string& userName)
      : session_(std::move(connection), std::move(schema), clock, userName),
        database_(session_),
        foreignChanges_(session_) {}

  std::unique_ptr<platform::Object> object(std::string_view key) override {
    const auto object = ParseRef(session_.Schema(), key);
    if (!ObjectExists(session_, object)) throw NoSuchObject(object);
    return std::make_unique<StoreObject>(session_, object);
  }

  std::unique_ptr<platform::Object> NewObject(std::string_view entity, std::string_view name) override {
    return std::make_unique<StoreObject>(session_,
                                         InsertObject(session_, session_.Schema().Entity(entity), std::string(name)));
  }

  std::unique_ptr<platform::Object> FindObject(std::string_view entity, std::string_view name) override {
    const auto& definition = session_.Schema().Entity(entity);
    const auto statement = session_.Use(definition.Statements().findByName);
    statement->BindText(0, name);
    if (!statement->Step() || statement->IsNull(0)) return nullptr;
    return std::make_unique<StoreObject>(session_,
                                         ObjectRef{&definition, static_cast<std::int32_t>(statement->Integer(0))});
  }

  const platform::Schema& Schema() const override { return session_.Schema(); }
  platform::Database& Database() override { return database_; }
  std::unique_ptr<platform::Fetch> NewFetch() override { return std::make_unique<StoreFetch>(session_); }

  std::int32_t CountObjects(std::string_view entity, const platform::Filter& filter) override {
    FetchPath path;
    auto& node = path.nodes.emplace_back();
    node.entity = std::string(entity);
    DeclareFilter(node, filter);
    path.root = 0;
    // Without a column and an order, the statement is counted as it stands.
    const auto compiled = CompileFetch(session_.Schema(), path, std::nullopt);
    const auto statement = session_.Use("SELECT COUNT(*) FROM (" + compiled.statement.text + ")");
    int parameter = 0;
    for (const auto& value : compiled.statement.parameters) Bind(*statement, parameter++, value);
    statement->Step();
    return static_cast<std::int32_t>(statement->Integer(0));
  }

  void PrepareDelete(const platform::KeyedCollection<std::string>& keys) override {
    for (const auto& key : keys) ParseRef(session_.Schema(), key);
  }

  std::unique_ptr<platform::CommandScope> BeginCommand(std::string_view name) override {
    return std::make_unique<OpenCommand>(session_, name);
  }
  std::unique_ptr<platform::Transaction> BeginTransaction() override {
    return std::make_unique<OpenTransaction>(session_);
  }

  platform::ForeignChanges TakeForeignChanges() override { return foreignChanges_.Take(); }

  platform::Subscription OnObjectAdded(ObjectObserver observer) override {
    return session_.Events().objectAdded.Subscribe(std::move(observer));
  }
  platform::Subscription OnObjectDeleted(ObjectObserver observer) override {
    return session_.Events().objectDeleted.Subscribe(std::move(observer));
  }
  platform::Subscription OnLinked(RelationObserver observer) override {
    return session_.Events().linked.Subscribe(std::move(observer));
  }
  platform::Subscription OnUnLinked(RelationObserver observer) override {
    return session_.Events().unLinked.Subscribe(std::move(observer));
  }

 private:
  StoreSession session_;
  StoreDatabase database_;
  ForeignChangeReader foreignChanges_;
};

std::optional<platform::XmlDocument> LoadExtension(const std::string& path) {
  if (path.empty() || !std::filesystem::exists(path)) return std::nullopt;
  platform::XmlDocument document;
  document.load(path);
  return document;
}

}  // namespace

std::unique_ptr<platform::Repository> OpenStore(const StoreOptions& options, const platform::Clock& clock) {
  // The extension is read before the store is touched: a broken one must not leave half a change behind.
  auto schema = StoreSchema::Load(LoadExtension(options.extensionPath), options.extensionPath);
  auto connection =
      options.connect ? options.connect(options.path) : OpenSqliteConnection(options.path, Durability::Full);
  PrepareLayout(*connection, *schema);
  return std::make_unique<Store>(std::move(connection), std::move(schema), clock, options.userName);
}

}  // namespace qmrules::workbench::repository
