#pragma once

#include <QString>
#include <QStringList>

#include <memory>

class QTranslator;

namespace platform {

/// A folder of resources, among them the string tables: one folder "xx.lproj" a language, each with a table
/// "Localizable.qm" whose texts are found by key. A language folder is itself a bundle, of that one table.
///
/// Nothing here fails: what isn't there reads as absent. Main thread only.
class Bundle {
 public:
  /// The program's own resources.
  static std::shared_ptr<const Bundle> main();
  /// The bundle at `path`, for the languages of the main bundle; nullptr if there is no such folder.
  static std::shared_ptr<const Bundle> withPath(const QString& path);

  /// `path` is a folder on the disk or in the Qt resources; `languages` are the user's, in his order, as
  /// QLocale::uiLanguages() writes them ("ko-KR").
  Bundle(const QString& path, const QStringList& languages);
  ~Bundle();

  [[nodiscard]] QString resourcePath() const { return root; }
  /// Those of the user's languages for which there is a language folder, by the names of the folders and in
  /// his order; English if there is none of them; empty if that is missing too.
  [[nodiscard]] QStringList preferredLocalizations() const;
  /// The path of the file or folder NAME.TYPE; empty if there is none.
  [[nodiscard]] QString pathForResource(const QString& name, const QString& type) const;
  /// The text of `key` in this folder's own table or else in the table of the first preferred localisation;
  /// `value` where there is no text.
  [[nodiscard]] QString localizedString(const QString& key, const QString& value) const;

 private:
  [[nodiscard]] bool hasLanguage(const QString& name) const;

  const QString root;
  const QStringList languages;
  mutable std::unique_ptr<QTranslator> table;  // read at the first use
};

}  // namespace platform
