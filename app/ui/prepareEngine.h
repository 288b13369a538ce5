#pragma once

class QQmlEngine;

namespace corvane {

class AppearanceState;
class LanguageState;

/// Lets `engine` import the module `Corvane`, whose views then follow this language and this appearance. To
/// be called before the engine loads anything; both states outlive the engine. Main loop.
void prepareEngine(QQmlEngine& engine, LanguageState& language, AppearanceState& appearance);

/// What the engine was prepared with; null for an engine that was not prepared. The engine does not own it.
[[nodiscard]] LanguageState* languageOf(const QQmlEngine& engine);
[[nodiscard]] AppearanceState* appearanceOf(const QQmlEngine& engine);

}  // namespace corvane
