// SPDX-License-Identifier: MIT
// What the panel says beside its controls. Names, meanings and units come from the service.

const seconds = (milliseconds) => {
    const count = Math.max(1, Math.round(milliseconds / 1000));
    return count === 1 ? '1 second' : `${count} seconds`;
};
const counted = (count, one, many) => (count === 1 ? `1 ${one}` : `${count} ${many}`);

export const texts = {
    title: 'Instrument',
    skip: 'Skip to the page',
    root: 'Instrument',
    views: {
        label: 'Views',
        tree: 'Tree',
        favourites: 'Favourites',
        history: 'History'
    },
    connection: {
        connecting: 'Connecting …',
        loading: 'Reading the settings …',
        live: 'Connected',
        catchingUp: 'Connected again, catching up …',
        broken: 'Connection lost',
        brokenSince: (time) => `Connection lost for ${seconds(time)}`,
        again: (time) => `next try in ${seconds(time)}`,
        trying: 'trying …',
        now: 'Try now',
        token: 'A token is wanted',
        back: (time, missed) => `Connected again after ${seconds(time)}; ` +
            (missed === 0 ? 'nothing changed meanwhile.'
                : `${counted(missed, 'node', 'nodes')} changed meanwhile.`),
        backRead: (time) => `Connected again after ${seconds(time)}; all settings were read again.`
    },
    tree: {
        label: 'Settings and results',
        differs: 'differs from its default',
        differBelow: (count) => `${counted(count, 'setting', 'settings')} below differ from the defaults`
    }
};
