// SPDX-License-Identifier: MIT
// What the panel says beside its controls. Names, meanings, units and reasons of refusals come from
// the service.

function seconds(milliseconds) {
    const count = Math.max(1, Math.round(milliseconds / 1000));
    return count === 1 ? '1 second' : `${count} seconds`;
}

const mostOfValue = 40; // characters

const counted = (count, one, many) => (count === 1 ? `1 ${one}` : `${count} ${many}`);
const namedStep = (verb, text, count = 1) => (count > 1 ? `${verb} ${count} steps: ${text}`
    : text ? `${verb}: ${text}` : verb);

export const texts = {
    title: 'Instrument',
    root: 'Instrument',
    skip: 'Skip to the page',
    views: {
        label: 'Views',
        home: 'Overview',
        favourites: 'Favourites',
        waves: 'Traces',
        history: 'History'
    },
    kinds: {
        property: 'setting',
        result: 'result',
        function: 'action',
        operation: 'operation',
        group: 'group',
        array: 'array',
        map: 'map'
    },
    connection: {
        label: 'Connection',
        connecting: 'Connecting …',
        loading: 'Reading the settings …',
        live: 'Connected',
        catchingUp: 'Connected again, catching up …',
        broken: 'Connection lost',
        token: 'A token is wanted',
        brokenLong: 'The connection is lost. What is shown is what was known last.',
        tryNow: 'Try now',
        back: (time, missed) => `Connected again after ${seconds(time)}: ` +
            (missed === 0 ? 'nothing changed meanwhile.'
                : `${counted(missed, 'node', 'nodes')} changed meanwhile.`),
        backRead: (time) => `Connected again after ${seconds(time)}: all settings were read again.`,
        readOnly: 'Read only',
        readOnlyLong: 'The service only reads: nothing can be written from here.',
        lostLong: 'Nothing can be written while the connection is lost.',
        control: {
            local: 'Local',
            remote: 'Remote control',
            'local lockout': 'Local lockout'
        },
        controlLong: {
            local: 'The instrument is operated locally.',
            remote: 'The instrument is under remote control; everybody may write.',
            'local lockout': 'The instrument\'s own keys are locked out; writes from here are taken.'
        }
    },
    token: {
        heading: 'A token is wanted',
        about: 'The service is open to those who show its token. It is kept until this window closes.',
        label: 'Token',
        wrong: 'This token is not the service\'s.',
        show: 'Use it'
    },
    tree: {
        label: 'Settings and results',
        differs: 'differs from its default',
        differBelow: (count) => `${counted(count, 'setting', 'settings')} below ` +
            `${count === 1 ? 'differs from its default' : 'differ from their defaults'}`,
        onlyDiffering: 'Only what differs from the defaults',
        noneDiffers: 'All settings are at their defaults.',
        moved: (from) => `was ${from}`,
        more: (count) => `${count} more`,
        open: (name) => `Open ${name}`,
        close: (name) => `Close ${name}`
    },
    search: {
        label: 'Search',
        placeholder: 'Name, meaning, unit, value',
        found: (count) => (count === 0 ? 'Nothing found' : `${count} found`),
        results: 'Found',
        more: (count) => `Show ${count} more`,
        end: 'End the search'
    },
    home: {
        heading: 'Overview',
        about: 'Everything of the instrument stands in the tree; the search finds names, meanings, ' +
            'units and values.',
        differing: 'What differs from the defaults'
    },
    favourites: {
        heading: 'Favourites',
        none: 'No favourites yet. The star of a setting, a result or an action puts it here.',
        add: (name) => `${name} is a favourite`,
        gone: 'is not there now'
    },
    page: {
        way: 'Way from the root',
        nearest: 'What stands next above it is',
        missing: (path) => `There is no node “${path}”.`,
        loading: 'Reading …',
        copy: 'Copy link',
        copied: 'Link copied',
        facts: 'Details',
        fact: {
            path: 'Path',
            kind: 'Kind',
            type: 'Type',
            unit: 'Unit',
            default: 'Default',
            remote: 'Word of remote control',
            saved: 'Saved with',
            form: 'Form',
            items: 'Items'
        },
        saved: { settings: 'the user\'s settings', system: 'the system\'s settings' },
        notSaved: 'nothing',
        ofMost: (count, most) => `${count} of at most ${most}`,
        members: 'Settings and results',
        actions: 'Actions',
        groups: 'Groups'
    },
    trial: {
        heading: 'What would move?',
        about: 'Tried on a copy: nothing is written.',
        value: 'If it were',
        try: 'Try it',
        trying: 'Trying …',
        write: 'Write it',
        lost: 'Not tried: the instrument can not be reached.',
        nothing: 'Nothing would move.',
        moves: (count) => `${counted(count, 'node', 'nodes')} would move`,
        unlike: (count) => `The copy differed from the instrument in ${counted(count, 'node', 'nodes')}.`
    },
    why: {
        heading: 'What it moves and follows',
        starts: 'A change of it starts',
        startsNothing: 'A change of it starts no rule.',
        follows: 'Rules of its group, which may move it',
        followsNothing: 'Its group has no rules.',
        twins: 'kept in step with',
        lost: 'The rules can not be read now.'
    },
    moved: {
        heading: 'What moved',
        own: (step) => `${step}. It moved:`,
        others: 'Changed by others since',
        none: 'Nothing else moved.',
        said: (count) => `${counted(count, 'node', 'nodes')} moved`,
        toList: (count) => `${count} moved: go to the list`,
        from: 'was',
        to: 'is now',
        limits: 'limits',
        valid: 'valid',
        invalid: 'invalid',
        came: 'has come',
        gone: 'has gone',
        items: (count) => counted(count, 'item', 'items'),
        active: (name) => `active: ${name}`,
        nothing: 'none'
    },
    history: {
        heading: 'History',
        undo: (text, count) => namedStep('Undo', text, count),
        redo: (text, count) => namedStep('Redo', text, count),
        noUndo: 'Nothing to undo',
        noRedo: 'Nothing to redo',
        toUndo: 'To undo',
        toRedo: 'To redo',
        steps: 'What happened while this window was open',
        none: 'Nothing yet.',
        kind: {
            write: (name) => `You wrote ${name}`,
            run: (name) => `You ran ${name}`,
            items: (name) => `You changed the items of ${name}`,
            undo: (name) => `You undid ${name}`,
            redo: (name) => `You redid ${name}`,
            others: () => 'Others'
        },
        written: (name, { value, steps }) => {
            const what = value !== undefined ? String(value).slice(0, mostOfValue)
                : steps === undefined ? 'default'
                    : steps < 0 ? counted(-steps, 'step down', 'steps down')
                        : counted(steps, 'step up', 'steps up');
            return `${name}: ${what}`;
        },
        writtenSecret: (name) => `${name}: a secret`,
        refused: (reason) => `Refused: ${reason}`,
        lost: 'The instrument can not be reached.'
    }
};
