// The people and threads that a command names, and what a model may be told of them.
#pragma once

#include <string>
#include <string_view>

#include "OmbrixEngine/Workspace/EngineWorkspace.h"
#include "OmbrixMemoryKit/Memory/EntityInputs.h"

namespace ombrix::Entities {

/// The person or thread that `argument` names: a key ("name:ana ruiz"); the path or the title of a
/// memory file; a name that the meetings, the aliases or the memory files know; or a part of one
/// that no other has, whole words first, without case and diacritics. A private one is found by its
/// key or a whole name alone. Meetings that are private
/// (`EngineWorkspace::isPrivate`) count as not landed. Throws `CLIError`,
/// which lists the names when several fit.
MemoryEntity named(EngineWorkspace& workspace, std::string_view argument);

/// The entity of a key.
MemoryEntity ofKey(EngineWorkspace& workspace, std::string_view key);

/// The memory file of the entity; null when it has none. Of several the first one that is whole.
const MemoryFileEntry* file(EngineWorkspace& workspace, const MemoryEntity& entity);

/// What can be used of a memory file whose frontmatter may be incomplete; nothing without a file or
/// when the region is damaged.
std::optional<MemoryFile::Parsed> contents(const MemoryFileEntry* file);

/// True when no model is told of the entity.
bool isPrivate(EngineWorkspace& workspace, const MemoryEntity& entity);
/// Throws `CLIError` for such an entity.
void requirePublic(EngineWorkspace& workspace, const MemoryEntity& entity);

/// The open rows with the entities that a model may see, their texts without what is private.
FollowUpRows openRows(EngineWorkspace& workspace, std::span<const MemoryEntity> entities);

/// How a person is told of the entity: its display, else what its key says.
std::string title(const MemoryEntity& entity);
}  // namespace ombrix::Entities
