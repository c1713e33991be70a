INSERT INTO meeting_folders (id, name) VALUES (1, 'Clients'), (2, 'Team');
INSERT INTO meetings (id, title, start_time, duration_seconds, raw_transcript, formatted_notes, word_count, folder_id, calendar_event_id, mic_audio_path, system_audio_path) VALUES
  (1, 'Kick-off', '2026-01-05T09:00:00Z', 1800, 'Ann: hello', '# Notes', 2, 2, 'event-1', '/a/mic.wav', '/a/sys.wav'),
  (2, 'Žluťoučký kůň / "quoted"', '2026-03-02T09:00:00Z', 1830.5, '', '## Raw Transcript' || char(10) || 'x', 0, NULL, NULL, NULL, NULL),
  (7, 'Earlier, but inserted later', '2025-12-01T09:00:00Z', NULL, NULL, NULL, -3, 1, NULL, NULL, NULL);
INSERT INTO dictations (id, timestamp, duration_seconds, raw_text, app_context, word_count) VALUES
  (1, '2026-01-05T10:00:00Z', 12.25, 'one two', 'mail', 2),
  (2, '2026-01-06T10:00:00Z', NULL, NULL, NULL, 0),
  (3, '2026-01-07T10:00:00Z', 3, 'a' || char(0) || 'b' || char(9), 'notes', 1);
